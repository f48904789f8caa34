#!/bin/bash
# Builds the host programs against the installed package with the given compilers and runs them.
# Usage: hosts_test.sh CMAKE BUILD C-COMPILER C++-COMPILER [FLAGS]
. "$(dirname "$0")/install.sh"
"$cmake" -S "$root/tests/hosts" -B "$work/hosts" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_BUILD_TYPE=Debug \
    -DCMAKE_C_COMPILER="$1" -DCMAKE_CXX_COMPILER="$2" -DCMAKE_C_FLAGS="${3:-}" -DCMAKE_CXX_FLAGS="${3:-}" >"$work/log" &&
    "$cmake" --build "$work/hosts" >"$work/log" || {
    cat "$work/log"
    exit 1
}
"${cmake%cmake}ctest" --test-dir "$work/hosts" --output-on-failure --no-tests=error
