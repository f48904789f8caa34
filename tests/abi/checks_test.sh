#!/bin/bash
# Puts one fault at a time into a small tree and expects the check that is meant for it to find it: a check that finds
# nothing any more would otherwise look like a tree without faults.
set -eu
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
cd "$work"
mkdir -p build docs src/api tests
cp -R "$root"/{include,scripts,.clang-format,.clang-tidy} .
cp "$root/docs/architecture.md" docs
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

allows() { # check file: the check finds nothing with standard input as this file
    local output
    cat >"$2"
    output=$(scripts/check -b build "$1" 2>&1) || {
        printf 'check %s does not allow %s:\n%s\n' "$1" "$2" "$output"
        failed=1
    }
    rm "$2"
}

# Every folder is tried with a header of a folder that it may not include; rules and installed headers all may.
while read -r from to; do
    folder=src/$from
    [ "$from" != installed ] || folder=include/jxodbc
    mkdir -p "src/$to"
    touch "src/$to/there.h"
    finds includes "$from may not include src/$to/there.h" "$folder/fault.h" <<<"#include \"$to/there.h\""
done <<'END'
rules config
resources config
config install
install admin
admin resources
api jxutl/ini
setup install
setup config
api3 admin
api3 install
api api3
jxutl config
jxutl/ini jxutl/dialog
jxutl/dialog jxutl/ini
jxutl/thread jxutl/ini
odbcadmin/model odbcadmin/trial
odbcadmin/trial odbcadmin/model
odbcadmin/doctor odbcadmin/assist
odbcadmin/assist odbcadmin/cli
odbcadmin/cli odbcadmin/terminal
odbcadmin/terminal odbcadmin/desktop
odbcadmin/desktop odbcadmin/cli
odbcadmin jxutl/ini
END
finds includes 'config may not include src/install/there.h' src/config/fault.cpp <<<'#include <install/there.h>'
finds includes 'no header of this tree: gone.h' src/api/fault.cpp <<<'#include "gone.h"'
finds includes 'the list in docs/architecture.md does not name new' src/new/fault.h <<<'int a;'
echo '#include "config/fault.h"' >src/config/other.h
finds includes 'includes itself by way of other headers' src/config/fault.h <<<'#include "config/other.h"'
find src -name '*.h' -delete
finds format 'clang-format' src/api/fault.cpp <<<'int  a ;'
finds markers 'fault.cpp' src/api/fault.cpp <<<"// TO""DO: more"
finds markers 'fault_test.cpp' tests/api/fault_test.cpp <<<"void f() { usleep(1); }"
finds links 'gone.md' docs/fault.md <<<'See [there](gone.md).'
finds spelling 'recieve' src/api/fault.cpp <<<'// Whoever may recieve it.'
finds scripts 'fault' scripts/fault <<<$'#!/bin/sh\nif true; then'

lines() { yes "$1" | head -n "$2"; }
function_of() { # declaration lines...
    echo "$1 {"
    lines '    g();' $(($2 - 2))
    echo '}'
}
finds lengths 'src/api/fault.cpp has 501 lines' src/api/fault.cpp < <(lines 'int a;' 501)
finds lengths 'src/api/fault.h has 251 lines' src/api/fault.h < <(lines 'int a;' 251)
finds lengths 'the median is above 12' src/api/fault.cpp < <(function_of 'int f()' 13)
finds lengths 'the 90th percentile is above 40' src/api/fault.cpp < <(lines 'int h() {}' 4 && function_of 'int f()' 41)
finds lengths 'src/api/fault.cpp:5 has a function of 61 lines' src/api/fault.cpp \
    < <(lines 'int h() {}' 4 && function_of 'auto f = []' 61)
finds lengths 'tests/fault_test.cpp:5 has a function of 61 lines' tests/fault_test.cpp \
    < <(lines 'int h() {}' 4 && function_of 'TEST(Fault, IsLong)' 61)

# The size of functions in src is clang-tidy's to find.
compiles() { # source
    printf '[{"directory": "%s", "command": "clang++ -std=c++20 -c %s",\n"file": "%s"\n}]\n' "$work" "$1" "$work/$1" \
        >build/compile_commands.json
}
source=src/api/fault.cpp
compiles $source
for declaration in 'void f()' 'extern "C" void f()' 'template <typename T> void f(T)' 'S::S()'; do
    finds tidy 'recommended size' $source < <(echo 'void g(); struct S { S(); };' && function_of "$declaration" 62)
done
finds tidy 'recommended size' $source \
    < <(echo 'void g(); void f() { const auto h = ' && function_of '[]' 62 && echo '; h(); }')
finds tidy 'recommended size' $source <<<'int f(int a, int, int, int, int, int, int, int, int) { return a; }'
finds tidy 'recommended size' $source <<<'void f(int a) { while (a) { while (a) { while (a) { while (a) { --a; } } } } }'
allows tidy $source < <(echo 'void g();' && function_of 'void f()' 61)
allows tidy $source < <(echo 'void g();' && echo '// NOLINTNEXTLINE(readability-function-size): a table.' &&
    function_of 'void f()' 62)
finds tidy 'modernize-use-nullptr' src/api/fault.cpp <<<'int* a = 0;'
echo '[]' >build/compile_commands.json
finds tidy 'compiles nothing' src/api/fault.cpp <<<''

finds tests 'No program holds tests/api/fault_test.cpp' tests/api/fault_test.cpp <<<''

# Libraries without a fault, and with one each.
mkdir -p tests/abi tests/hosts build/src/jxodbc build/src/CMakeFiles/jxutl_objects.dir/jxutl
touch tests/abi/{odbcinst,odbcinst2,jxutl08,jxsetup}.txt
library() { # name source options...
    echo "$2" | gcc -x c -shared -fPIC -fvisibility=hidden -nostdlib -o "build/src/$1" -Wl,-soname,"${1##*/}" "${@:3}" -
}
library libjxutl08.so 'int a;'
library libjxsetup.so 'int a;'
library libodbcinst.so.1 'int a;'
library jxodbc/libodbcinst.so.2 'int a;'
for check in exports undefined needed; do
    allows $check src/api/nothing.cpp <<<''
done
finds exports '+SQLNew' src/api/nothing.cpp < <(library libodbcinst.so.1 '__attribute__((visibility("default"))) int SQLNew;')
finds undefined 'odbcinst uses abort' src/api/nothing.cpp \
    < <(library libodbcinst.so.1 'void abort(void); void f(void) { abort(); } ')
finds needed 'odbcinst must not need libdl.so.2' src/api/nothing.cpp \
    < <(library libodbcinst.so.1 'int a;' -Wl,--no-as-needed -l:libdl.so.2)
finds needed 'libodbcinst.so.1 does not bear its own name' src/api/nothing.cpp < <(library libodbcinst.so.1 'int a;' -Wl,-soname,other)
finds hosts 'No program in tests/hosts/*.c uses SQLNew' tests/abi/odbcinst.txt <<<'SQLNew'
objects=build/src/CMakeFiles/jxutl_objects.dir/jxutl
for call in 'int f(const char* a) { return ::rename(a, "b"); }' 'int f(int a) { return fsync(a); }' \
    'int f(const char* a) { return open(a, O_RDONLY); }'; do
    printf '#include <fcntl.h>\n#include <unistd.h>\n#include <stdio.h>\n%s\n' "$call" | g++ -x c++ -c -o fault.o -
    finds seam 'jxutl/fault.cpp' $objects/fault.cpp.o <fault.o
done

# Headers that compile stay as they are tried once, so that each fault here costs its own header's time only.
finds headers 'src/config/fault.h does not compile alone' src/config/fault.h <<<'inline std::string f() { return {}; }'
finds headers 'src/config/fault.h does not compile alone' src/config/fault.h <<<'struct NoGuard {};'
echo '#include <string>' >src/config/fault.cpp
finds headers 'src/config/fault.h does not compile alone' src/config/fault.h <<<'#pragma once
inline std::string f() { return {}; }'
# A source that includes it first is its trial; nothing includes it twice then.
echo '#include "config/fault.h"' >src/config/fault.cpp
finds headers 'src/config/fault.h can be included once only' src/config/fault.h <<<'struct NoGuard {};'
header=include/jxodbc/jxtext.h
finds headers "$header does not compile alone: gcc" $header <<<'namespace n {}'
finds headers "$header does not compile alone: clang" $header <<<$'#ifdef __clang__\n#error\n#endif'
finds headers "$header does not compile alone: g++ -x c++ -std=c++11" $header <<<$'#if __cplusplus == 201103L\n#error\n#endif'
header=include/jxodbc/odbcinst.h
finds headers "$header does not compile behind types" $header <<<$'#ifdef JX_NO_ODBC_TYPES\ntypedef int HWND;\n#endif'
allows headers src/config/fault.h <<<$'#pragma once\n#include <string>\ninline std::string f() { return {}; }'
exit $failed
