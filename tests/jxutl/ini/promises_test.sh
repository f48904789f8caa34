#!/bin/bash
# Every promise of docs/ini-store.md names its test, and every test it names exists.
# Usage: promises_test.sh SOURCE-ROOT
set -u
cd "$1" || exit 1
document=docs/ini-store.md
failed=0

# Test programs' tests as Suite.Name, and those of CTest by their names.
known=$(
    grep -rhoE '^TEST(_F)?\([A-Za-z0-9]+,[[:space:]]*[A-Za-z0-9]+\)' --include='*_test.cpp' tests |
        sed -E 's/^TEST(_F)?\(([A-Za-z0-9]+),[[:space:]]*([A-Za-z0-9]+)\)/\2.\3/'
    grep -hoE 'add_test\(NAME [a-z.-]+' tests/jxutl/ini/CMakeLists.txt | sed 's/.* //'
)

# shellcheck disable=SC2016 # the backquotes are the document's
named=$(grep -oE '`[A-Za-z0-9]+\.[A-Za-z0-9-]+`' "$document" | tr -d '`' |
    grep -E '^(ini|(Ini|JxIni|CrashDisk|ProfileWrite|AllocationFault|Failure|NameHash|ProfileCache|Installation|InOneChange)[A-Za-z]*)\.[A-Za-z]' | grep -vE '\.(h|cpp|ini|md)$' | sort -u)
[ "$(wc -w <<<"$named")" -ge 50 ] || { echo "Only $(wc -w <<<"$named") tests are named"; failed=1; }
for test in $named; do
    grep -qxF "$test" <<<"$known" || { echo "There is no test $test"; failed=1; }
done

# A promise is a list item outside the section that says what is not promised.
awk '
    function check() { if (item != "" && item !~ /`(ini|[A-Z][A-Za-z]*)\.[A-Za-z-]+`/) { print "No test is named: " item; bad = 1 } item = "" }
    /^#/ { check(); promises = !/Not promised|Failure steps/ }
    /^$/ { check() }
    promises && /^(-|[0-9]+\.) / { check(); item = $0; next }
    item != "" { item = item " " $0 }
    END { check(); exit bad }
' "$document" || failed=1
exit $failed
