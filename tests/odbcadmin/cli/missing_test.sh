#!/bin/sh
# Configures the project where a package of the command is missing: the libraries and their tests do without it.
# Usage: missing_test.sh CMAKE CXX-COMPILER
set -eu
cmake=$1
compiler=$2
root=$(cd "$(dirname "$0")/../../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

configure() { # mode
    "$cmake" -S "$root" -G Ninja -B "$work/$1" -DCMAKE_CXX_COMPILER="$compiler" -DJX_BUILD_ADMIN="$1" \
        -DCMAKE_DISABLE_FIND_PACKAGE_CLI11=ON >"$work/log" 2>&1
}

fail() { # what
    echo "$1"
    cat "$work/log"
    exit 1
}

says() { # text
    tr -s ' \n' ' ' <"$work/log" | grep -q "$1" || fail "does not say: $1"
}

configure AUTO || fail "AUTO must go on without the command"
says 'CMake Warning.*these packages are missing: libcli11-dev'
configure OFF || fail "OFF must go on without the command"
if grep -q 'not built' "$work/log"; then
    fail "OFF must not warn"
fi
if configure ON; then
    fail "ON must not go on without the command"
fi
says 'CMake Error.*odbcadmin needs these packages: libcli11-dev'
