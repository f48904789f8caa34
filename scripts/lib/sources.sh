# The checks of scripts/check that need the sources only. Each prints its findings and returns 1 when there are any.

# Files of the repository by name pattern, without what was built.
files_named() { # directory... -- pattern...
    local directories=() patterns=()
    while [ "$1" != -- ]; do
        [ ! -e "$1" ] || directories+=("$1")
        shift
    done
    shift
    while [ $# -gt 0 ]; do
        patterns+=(-o -name "$1")
        shift
    done
    [ ${#directories[@]} -eq 0 ] ||
        find "${directories[@]}" -type f \( "${patterns[@]:1}" \) -not -path './build/*' -not -path './.git/*' | sort
}

code_files() { files_named include src tests examples bench -- '*.cpp' '*.c' '*.h'; }
text_files() { files_named . -- '*.cpp' '*.c' '*.h' '*.md' '*.txt' '*.sh' '*.cmake' '*.in' '*.json' '*.5' 'run' &&
    find scripts -type f; }

# Prints standard input and fails when it holds anything.
nothing() { ! grep . ; }

check_format() { code_files | xargs clang-format --dry-run --Werror 2>&1 | nothing; }

check_scripts() {
    local bad=0 script
    for script in $(find scripts tests .ci -type f -exec grep -lE '^#!/bin/(ba)?sh' {} +) scripts/lib/*.sh; do
        bash -n "$script" || bad=1
    done
    return $bad
}

# What a folder may include stands in docs/architecture.md, for readers and for this check.
check_includes() { files_named include src -- '*.h' '*.cpp' '*.c' | awk -f scripts/lib/includes.awk; }

# GoogleTest's headers are those of the sources that every build compiles.
googletest=$(sed -n 's/^JX_GOOGLETEST_SOURCE:[A-Z]*=//p' "${build:-}/CMakeCache.txt" 2>/dev/null)
include_folders="-Isrc -Iinclude/jxodbc -Itests/support
    -isystem ${googletest:-/usr/src/googletest}/googletest/include"

# Compiles a header twice, and nothing else, with the given compiler, language and options.
compile_header() { # header compiler...
    local header=$1
    shift
    printf '#include "%s"\n#include "%s"\n%s\n' "$root/$header" "$root/$header" "extern int jxNotAnEmptySource;" |
        "$@" -fsyntax-only -Wall -Wextra -Werror $include_folders - 2>&1 ||
        echo "$header does not compile alone: $*"
}
export -f compile_header
export root include_folders

own_types='typedef int BOOL; typedef unsigned short WORD; typedef unsigned int DWORD; typedef unsigned int HWND;
typedef char* LPSTR; typedef const char* LPCSTR;'

# Installed headers are included by C programs, by older C++ and beside other ODBC headers.
installed_header_findings() {
    local header compiler
    for header in include/jxodbc/*.h; do
        for compiler in gcc clang; do
            compile_header "$header" $compiler -x c -std=c99 -pedantic
        done
        compile_header "$header" g++ -x c++ -std=c++11 -pedantic
    done
    for header in include/jxodbc/{odbcinst,odbcins,jxdialog}.h; do
        printf '%s\n#define JX_NO_ODBC_TYPES\n#include "%s"\n' "$own_types" "$root/$header" |
            gcc -x c -std=c99 -pedantic -Wall -Wextra -Werror -fsyntax-only $include_folders - 2>&1 ||
            echo "$header does not take types that are defined already"
    done
}

check_headers() {
    {
        files_named include src tests -- '*.h' |
            xargs -P 2 -I '{}' bash -c 'compile_header "$1" g++ -x c++ -std=c++20' - '{}'
        installed_header_findings
    } | nothing
}

check_lengths() { scripts/lengths; }

# Nothing is left for later, switched off or waited for; only a stress test may stop at a random moment.
check_markers() {
    {
        text_files | xargs grep -nE '\b(TO''DO|FIX''ME|XX''X|HA''CK)\b'
        find tests -name '*.cpp' -not -path 'tests/stress/*' -exec grep -nE '\bDISABLED_|sleep_for|sleep_until|\busleep\(|\bsleep\(' {} +
    } | nothing
}

# The host programs in C touch every exported C function and object. (Mangled names have their meaning behind them.)
check_hosts() {
    grep -vh -e '  # ' tests/abi/odbcinst.txt tests/abi/jxutl08.txt | while read -r name; do
        grep -qw "$name" tests/hosts/*.c || echo "No program in tests/hosts/*.c uses $name"
    done | nothing
}

# Relative links of the documents lead somewhere.
check_links() {
    files_named . -- '*.md' | while read -r document; do
        grep -oE '\]\([^)#: ]+[)#]' "$document" | sed 's/^](//; s/[)#]$//' | while read -r target; do
            [ -e "$(dirname "$document")/$target" ] || echo "$document links to $target, which is not there"
        done
    done | nothing
}

check_spelling() {
    text_files | grep -v -e scripts/spelling.txt -e tests/abi/ | xargs codespell -I scripts/spelling.txt 2>&1 | nothing
}
