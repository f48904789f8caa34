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

# Whether a header of src has a source of its name that includes it before anything else. clang-tidy and the builds debug
# and clang compile that source for itself, and so the header with nothing before it.
is_first_of_its_source() { # header
    local source=${1%.h}.cpp
    [[ $1 == src/* && -e $source ]] && [ "$(grep -m 1 '^#include' "$source")" = "#include \"${1#src/}\"" ]
}

# How each other header is tried, for ninja, which tries it again only when something that it includes has changed: with
# nothing before it, and twice; the installed headers also in C, in older C++ and behind the types of other ODBC headers.
header_tries() {
    local folder=${build// /\$ }/headers header googletest
    local types='typedef int BOOL; typedef unsigned short WORD; typedef unsigned int DWORD; typedef unsigned int HWND;\n'
    types+='typedef char* LPSTR; typedef const char* LPCSTR;\n#define JX_NO_ODBC_TYPES\n'
    # GoogleTest's headers are those of the sources that every build compiles.
    googletest=$(sed -n 's/^JX_GOOGLETEST_SOURCE:[A-Z]*=//p' "$build/CMakeCache.txt" 2>/dev/null)
    cat <<END
builddir = $folder
rule try
  command = printf '\$before#include "\$in"\\n#include "\$in"\\nextern int jxNotAnEmptySource;\\n' | $
    \$compiler -fsyntax-only -Wall -Wextra -Werror -Isrc -Iinclude -Iinclude/jxodbc -Itests/support $
    -isystem '${googletest:-/usr/src/googletest}/googletest/include' -MD -MF \$out.d - && touch \$out || $
    { echo '\$in does not compile \$how: \$compiler'; exit 1; }
  depfile = \$out.d
  deps = gcc
END
    try() { # header how before compiler...
        local name="$1 ${*:4}"
        [ -z "$3" ] || name+=" types"
        name=${name//\//,}
        printf 'build %s/%s: try %s\n' "$folder" "${name// /_}" "$1"
        printf '  %s = %s\n' how "$2" before "$3" compiler "${*:4}"
    }
    for header in $(files_named include src tests -- '*.h'); do
        is_first_of_its_source "$header" || try "$header" alone '' g++ -x c++ -std=c++20
    done
    for header in include/jxodbc{,3}/*.h; do
        try "$header" alone '' gcc -x c -std=c99 -pedantic
        try "$header" alone '' clang -x c -std=c99 -pedantic
        try "$header" alone '' g++ -x c++ -std=c++11 -pedantic
    done
    for header in include/jxodbc/{odbcinst,odbcins,jxdialog}.h; do
        try "$header" 'behind types that are defined already' "$types" gcc -x c -std=c99 -pedantic
    done
    types+='typedef unsigned short UWORD; typedef short RETCODE; typedef unsigned short SQLWCHAR;\n'
    types=${types/unsigned int HWND/void* HWND}
    try include/jxodbc3/odbcinst.h 'behind types that are defined already' "$types" gcc -x c -std=c99 -pedantic
}

check_headers() {
    local findings bad=0
    mkdir -p "$build/headers"
    header_tries >"$build/headers/tries.ninja"
    findings=$(ninja -f "$build/headers/tries.ninja" -j "$(nproc)" -k 0 --quiet 2>&1) ||
        sed '/^FAILED: /{N;d}' <<<"$findings" | nothing || bad=1
    files_named src -- '*.h' | xargs -r grep -L '^#pragma once$' | sed 's/$/ can be included once only/' | nothing || bad=1
    return $bad
}

check_lengths() { scripts/lengths; }

# Nothing is left for later, switched off or waited for; only a stress test may stop at a random moment.
check_markers() {
    {
        text_files | xargs grep -HnE '\b(TO''DO|FIX''ME|XX''X|HA''CK)\b'
        find tests -name '*.cpp' -not -path 'tests/stress/*' -exec grep -HnE '\bDISABLED_|sleep_for|sleep_until|\busleep\(|\bsleep\(' {} +
    } | nothing
}

# The host programs in C touch every exported C function and object. (Mangled names have their meaning behind them.)
check_hosts() {
    grep -vh -e '  # ' tests/abi/{odbcinst,odbcinst2,jxutl08}.txt | while read -r name; do
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
