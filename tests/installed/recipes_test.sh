#!/bin/bash
# Runs the recipes of docs/recipes.md as they stand there, one after another, with the folders of the system that they name
# in a folder of the test's own.
# Usage: recipes_test.sh CMAKE BUILD DRIVER PROGRAM, a library that is a driver and a program that is called report here
. "$(dirname "$0")/install.sh"
system=$work/system
mkdir -p "$system/opt/acme/lib" "$system/opt/acme/share/acme" "$system/etc" "$work/bin" "$work/home"
cp "$1" "$system/opt/acme/lib/libacmeodbc.so"
printf '[Acme ODBC]\nDescription\t= A driver\nDriver\t\t= libacmeodbc.so\nSetup\t\t=\nDebug\t\t= 0\n' \
    >"$system/opt/acme/share/acme/odbcinst.ini"
cp "$2" "$work/bin/report"
unset JXODBC_LOG CREDENTIALS_DIRECTORY
umask 022
export HOME=$work/home ODBCSYSINI=$system/etc PATH=$work/bin:$prefix/bin:$PATH

# The blocks for one shell; what a line "# prints: ..." tells must come out of its block.
mkdir "$work/blocks"
awk -v folder="$work/blocks" '
    /^```sh/ { file = sprintf("%s/%02d", folder, ++count); next }
    /^```/ { file = "" }
    file != "" { print > file }' "$root/docs/recipes.md"
# What an image holds are paths as the image has them.
for block in "$work"/blocks/??; do
    lines=
    ! grep -q -e "--root" "$block" || lines="/^# prints/!"
    sed -Ei "${lines}s#(^|[ =\"'(])(/(etc|opt|run|srv)/)#\1$system\2#g" "$block"
done
count=$(ls "$work/blocks" | wc -l)
[ "$count" -ge 8 ] || {
    echo "docs/recipes.md has only $count blocks"
    exit 1
}
for block in "$work"/blocks/??; do
    printf 'exec >"%s.out" 2>&1\n' "$block"
    cat "$block"
done >"$work/all.sh"
failed=0
TMPDIR=$work bash -eu "$work/all.sh" || failed=1
for block in "$work"/blocks/??; do
    [ -e "$block.out" ] || continue
    sed -n 's/^# prints: //p' "$block" | while read -r line; do
        grep -qF -- "$line" "$block.out" || echo "does not print \"$line\""
    done >"$work/missing"
    if [ -s "$work/missing" ]; then
        cat "$block" "$block.out" "$work/missing"
        failed=1
    fi
done
last=$(ls "$work"/blocks/*.out | tail -1)
[ $failed -eq 0 ] || cat "$last"
exit $failed
