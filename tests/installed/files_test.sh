#!/bin/bash
# What cmake --install leaves: every file it should, libraries that look for each other beside themselves only, and no
# text that names the folder of the build or of the sources.
# Usage: files_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"
cd "$prefix"

libraries="lib/libodbcinst.so.1 lib/libjxutl08.so lib/libjxsetup.so"
second=lib/jxodbc/libodbcinst.so.2
for file in $libraries $second lib/libodbcinst.so lib/cmake/jxodbc/jxodbcConfig.cmake lib/cmake/jxodbc/jxodbcConfigVersion.cmake \
    lib/pkgconfig/jxodbc-odbcinst.pc lib/pkgconfig/jxodbc-jxutl08.pc lib/pkgconfig/jxodbc3.pc share/man/man5 share/doc/jxodbc/LICENSE; do
    [ -e "$file" ] || fail "$file was not installed"
done
[ "$(readlink lib/libodbcinst.so)" = libodbcinst.so.1 ] || fail "lib/libodbcinst.so is no link to libodbcinst.so.1"

for folder in jxodbc jxodbc3; do
    diff -r "$root/include/$folder" "include/$folder" || fail "include/$folder is not the folder of that name"
done
for page in "$root"/docs/man/*.[35]; do
    cmp -s "$page" "share/man/man${page##*.}/$(basename "$page")" || fail "$(basename "$page") was not installed"
done

for library in $libraries; do
    readelf -dW "$library" | grep -q 'RUNPATH.*\[$ORIGIN\]' || fail "$library does not look beside itself"
done
readelf -dW "$second" | grep -q 'RUNPATH.*\[$ORIGIN/\.\.\]' || fail "$second does not look above itself"
[ "$(find . -name 'libodbcinst.so*' | sort | xargs)" = "./lib/jxodbc/libodbcinst.so.2 ./lib/libodbcinst.so ./lib/libodbcinst.so.1" ] ||
    fail "libodbcinst.so.2 is where the loader or the linker finds it: $(find . -name 'libodbcinst.so*' | xargs)"
if grep -rlF -e "$root" -e "$build" --include='*.cmake' --include='*.pc' --include='*.h' .; then
    fail "these files name the folder of the sources or of the build"
fi
exit $failed
