#!/bin/sh
# Configures the project with flags that would keep programs from replacing jxDllDialog; each must be refused by name.
# Usage: flags_test.sh CMAKE CXX-COMPILER
set -eu
cmake=$1
compiler=$2
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
failed=0

refused() { # what... : the arguments of cmake
    if "$cmake" "$@" >"$work/log" 2>&1; then
        echo "was not refused: $*"
        failed=1
    elif ! tr -s ' \n' ' ' <"$work/log" | grep -q 'programs could not replace jxDllDialog'; then
        echo "failed for another reason: $*"
        cat "$work/log"
        failed=1
    fi
}

refused_configuration() { refused -S "$root" -G Ninja "-DCMAKE_CXX_COMPILER=$compiler" -DJX_BUILD_TESTS=OFF "$@"; }
refused_configuration -B "$work/a" -DCMAKE_SHARED_LINKER_FLAGS=-Wl,-Bsymbolic
export LDFLAGS=-Wl,-Bsymbolic-functions
refused_configuration -B "$work/b"
unset LDFLAGS

rules=$root/cmake/JxRefuseFlags.cmake
for setting in CMAKE_SHARED_LINKER_FLAGS=-Wl,-Bsymbolic CMAKE_SHARED_LINKER_FLAGS_RELEASE=-Wl,-Bsymbolic \
    CMAKE_SHARED_LINKER_FLAGS=-Wl,--dynamic-list=names CMAKE_CXX_FLAGS=-flto=auto CMAKE_CXX_FLAGS_DEBUG=-flto \
    CMAKE_CXX_FLAGS=-fno-semantic-interposition CMAKE_CXX_FLAGS=-fvisibility=protected CMAKE_CXX_FLAGS=-fwhole-program \
    CMAKE_C_FLAGS=-flto CMAKE_INTERPROCEDURAL_OPTIMIZATION=ON CMAKE_INTERPROCEDURAL_OPTIMIZATION_RELEASE=ON; do
    refused "-D$setting" -P "$rules"
done

# What came in another way shows in the library: the build looks at each one it links.
after_link() { "$cmake" -DREADELF=readelf "-DLIBRARY=$work/$1.so" -P "$root/cmake/JxCheckDynamicCall.cmake" 2>"$work/log"; }
echo 'int jxDllDialog(void) { return 0; }' >"$work/starter.c"
echo 'int jxDllDialog(void); int call(void) { return jxDllDialog(); }' >"$work/caller.c"
for options in -O0 -Wl,-Bsymbolic -Wl,-Bsymbolic-functions; do
    cc -shared -fPIC -O2 $options -o "$work/$options.so" "$work/starter.c" "$work/caller.c"
done
after_link -O0 || failed=1
for options in -Wl,-Bsymbolic -Wl,-Bsymbolic-functions; do
    if after_link "$options"; then
        echo "a library linked with $options was not refused"
        failed=1
    fi
done

# What does no harm is let through.
"$cmake" "-DCMAKE_CXX_FLAGS=-O2 -fno-lto -Wl,--as-needed" -P "$rules" || failed=1
exit $failed
