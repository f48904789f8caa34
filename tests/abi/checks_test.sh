#!/bin/bash
# Puts one fault at a time into a copy of the tree and expects the check that is meant for it to find it: a check that
# finds nothing any more would otherwise look like a tree without faults.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
mkdir "$work/build"
cp -R "$root"/{include,src,scripts,tests,docs,.clang-format} "$work"
cp "$root"/*.md "$work"
cd "$work"
failed=0

finds() { # check words file: the check fails, and says these words, with what standard input adds to the file
    local check=$1 words=$2 file=$3 output kept
    kept=$(mktemp)
    [ ! -e "$file" ] || cp "$file" "$kept"
    mkdir -p "$(dirname "$file")"
    cat >>"$file"
    if output=$(scripts/check -b build "$check" 2>&1) || ! grep -qF -- "$words" <<<"$output"; then
        printf 'check %s did not find %s in %s:\n%s\n' "$check" "$words" "$file" "$output"
        failed=1
    fi
    if [ -s "$kept" ]; then cp "$kept" "$file"; else rm "$file"; fi
    rm "$kept"
}

# Every folder is tried with a header of a folder that it may not include; rules and installed headers all may.
while read -r from to; do
    folder=src/$from
    [ "$from" != installed ] || folder=include/jxodbc
    finds includes "$from may not include src/$to" "$folder/fault.h" <<<"#include \"$to\""
done <<'END'
rules config/name_list.h
resources config/name_list.h
config install/install_record.h
install admin/add_driver.h
admin resources/strings.h
api jxutl/ini/ini_text.h
setup install/install_record.h
jxutl config/name_list.h
jxutl/ini jxutl/dialog/window.h
jxutl/dialog jxutl/ini/ini_text.h
jxutl/thread jxutl/ini/ini_text.h
odbcadmin/model odbcadmin/trial/child.h
odbcadmin/trial odbcadmin/model/reason.h
odbcadmin/doctor odbcadmin/assist/help.h
odbcadmin/assist odbcadmin/cli/session.h
odbcadmin/cli odbcadmin/terminal/screen.h
odbcadmin/terminal odbcadmin/desktop/desktop_screen.h
odbcadmin/desktop odbcadmin/cli/session.h
odbcadmin jxutl/ini/ini_text.h
END
finds includes 'config may not include src/install/install_record.h' src/config/fault.cpp <<<'#include <install/install_record.h>'
finds includes 'no header of this tree: gone.h' src/api/fault.cpp <<<'#include "gone.h"'
finds includes 'the list in docs/architecture.md does not name new' src/new/fault.h <<<'int a;'
echo '#include "config/fault.h"' >src/config/other.h
finds includes 'includes itself by way of other headers' src/config/fault.h <<<'#include "config/other.h"'
rm -r src/config/other.h src/new
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
rm -r tests/* src/jxutl/* src/admin src/install src/setup src/odbcadmin
finds headers 'does not compile alone' src/config/fault.h <<<'inline std::string f() { return {}; }'
finds headers 'does not compile alone' src/config/fault.h <<<'struct NoGuard {};'
finds headers 'include/jxodbc/jxtext.h does not compile alone: gcc' include/jxodbc/jxtext.h <<<'namespace n {}'
finds headers 'include/jxodbc/odbcinst.h does not take types' include/jxodbc/odbcinst.h <<<'typedef int HWND;'
exit $failed
