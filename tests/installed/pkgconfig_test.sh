#!/bin/bash
# Builds the C host program with what pkg-config says, and runs it.
# Usage: pkgconfig_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"
export PKG_CONFIG_PATH=$prefix/lib/pkgconfig
cd "$root/tests/hosts"
for package in jxodbc-jxutl08 jxodbc-odbcinst jxodbc3; do
    version=$(pkg-config --modversion "$package")
    grep -q "VERSION $version " "$root/CMakeLists.txt" || {
        echo "$package is of version $version"
        exit 1
    }
done
cc -std=c99 -o "$work/host" host_main.c installer.c utilities.c ini_store.c windows.c \
    $(pkg-config --cflags --libs jxodbc-odbcinst)
LD_LIBRARY_PATH=$prefix/lib "$work/host" "$prefix/lib/libjxsetup.so"

for header in odbcinst.h jxodbc3/odbcinst.h; do
    sed "s|jxodbc3/odbcinst.h|$header|" installer3.c >"$work/installer3.c"
    cc -std=c99 -I. -o "$work/installer3" "$work/installer3.c" $(pkg-config --cflags --libs jxodbc3)
    LD_LIBRARY_PATH=$prefix/lib/jxodbc "$work/installer3"
done

echo '#include <jxini.h>
int main(void) { return jxIniLastFailure().step; }' >"$work/store.c"
cc -o "$work/store" "$work/store.c" $(pkg-config --cflags --libs jxodbc-jxutl08)
LD_LIBRARY_PATH=$prefix/lib "$work/store"
