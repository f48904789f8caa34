#!/bin/bash
# Builds the C host program with what pkg-config says, and runs it.
# Usage: pkgconfig_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
cd "$root/tests/hosts"
for package in jxodbc-jxutl08 jxodbc-odbcinst; do
    version=$(pkg-config --modversion "$package")
    grep -q "VERSION $version " "$root/CMakeLists.txt" || {
        echo "$package is of version $version"
        exit 1
    }
done
cc -std=c99 -o "$work/host" host_main.c installer.c utilities.c ini_store.c windows.c \
    $(pkg-config --cflags --libs jxodbc-odbcinst)
LD_LIBRARY_PATH=$prefix/lib "$work/host" "$prefix/lib/libjxsetup.so"

echo '#include <jxini.h>
int main(void) { return jxIniLastFailure().step; }' >"$work/store.c"
cc -o "$work/store" "$work/store.c" $(pkg-config --cflags --libs jxodbc-jxutl08)
LD_LIBRARY_PATH=$prefix/lib "$work/store"
