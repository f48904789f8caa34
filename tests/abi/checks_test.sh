#!/bin/bash
# Puts one fault at a time into a copy of the tree and expects the check that is meant for it to find it: a check that
# finds nothing any more would otherwise look like a tree without faults.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/build"
cp -R "$root"/{src,scripts,tests,docs,.clang-format} "$work"
cp "$root"/*.md "$work"
cd "$work"
failed=0

mkdir -p src/config/a src/config/b
echo 'int a;' | tee src/config/a/fault.h >src/config/b/fault.h

finds() { # check words file: the check fails, and says these words, with what standard input adds to the file
    local check=$1 words=$2 file=$3 output kept
    kept=$(mktemp)
    [ ! -e "$file" ] || cp "$file" "$kept"
    cat >>"$file"
    if output=$(scripts/check -b build "$check" 2>&1) || ! grep -qF -- "$words" <<<"$output"; then
        printf 'check %s did not find %s in %s:\n%s\n' "$check" "$words" "$file" "$output"
        failed=1
    fi
    if [ -s "$kept" ]; then cp "$kept" "$file"; else rm "$file"; fi
    rm "$kept"
}

finds includes 'config may not include src/jxutl/ini/jxini.h' src/config/fault.cpp <<<'#include "jxini.h"'
finds includes 'platform may not include src/config/odbcins.h' src/platform/fault.h <<<'#include <odbcins.h>'
finds includes 'platform may not include src/config/odbcins.h' src/platform/fault.h <<<'#include "config/odbcins.h"'
finds includes 'jxutl may not include src/config/odbcins.h' src/jxutl/fault.cpp <<<'#include <config/odbcins.h>'
finds includes 'no header of this tree: gone.h' src/api/fault.cpp <<<'#include "gone.h"'
finds includes 'several headers of that name: fault.h' src/api/fault.cpp <<<'#include "fault.h"'
finds format 'clang-format' src/api/fault.cpp <<<'int  a ;'
finds markers 'fault.cpp' src/api/fault.cpp <<<"// TO""DO: more"
finds markers 'fault_test.cpp' tests/api/fault_test.cpp <<<"void f() { usleep(1); }"
finds links 'gone.md' docs/fault.md <<<'See [there](gone.md).'
finds spelling 'recieve' src/api/fault.cpp <<<'// Whoever may recieve it.'
finds scripts 'fault' scripts/fault <<<$'#!/bin/sh\nif true; then'
finds lengths 'src/api/fault.cpp:1 has 62 lines' src/api/fault.cpp < <(echo 'int f() {'; yes '    g();' | head -60; echo '}')
finds lengths 'src/api/fault.cpp has 501 lines' src/api/fault.cpp < <(yes 'int a;' | head -501)
finds lengths 'src/api/fault.h has 251 lines' src/api/fault.h < <(yes 'int a;' | head -251)
objects=build/src/CMakeFiles/jxutl_objects.dir/jxutl
mkdir -p $objects
for call in 'int f(const char* a) { return ::rename(a, "b"); }' 'int f(int a) { return fsync(a); }' \
    'int f(const char* a) { return open(a, O_RDONLY); }'; do
    printf '#include <fcntl.h>\n#include <unistd.h>\n#include <stdio.h>\n%s\n' "$call" | g++ -x c++ -c -o fault.o -
    finds seam 'jxutl/fault.cpp' $objects/fault.cpp.o <fault.o
done
echo '[]' >build/compile_commands.json
finds tests 'No program holds tests/api/fault_test.cpp' tests/api/fault_test.cpp <<<''

# A reason on its first line allows a long function.
{ echo 'int f() {  // Long: a table of cases that belong together.'; yes '    g();' | head -60; echo '}'; } >src/api/fault.cpp
if scripts/check lengths | grep 'fault.cpp:'; then
    failed=1
fi
rm src/api/fault.cpp

# The check of the headers takes its time, so it gets a smaller tree.
rm -r tests/* src/jxutl/* src/admin src/install src/setup src/odbcadmin src/config/a src/config/b
mkdir src/jxutl/ini && cp "$root/src/jxutl/ini/jxini.h" src/jxutl/ini
finds headers 'does not compile alone' src/config/fault.h <<<'inline std::string f() { return {}; }'
finds headers 'does not compile alone' src/config/fault.h <<<'struct NoGuard {};'
finds headers 'src/platform/jxtext.h does not compile alone: gcc' src/platform/jxtext.h <<<'namespace n {}'
finds headers 'src/api/odbcinst.h does not take types' src/api/odbcinst.h <<<'typedef int HWND;'
exit $failed
