#!/bin/bash
# Runs the examples of README.md as they stand there, one after another, in a folder that is laid out as scripts/demo
# leaves the checkout, with a home folder of their own. Skipped where the database driver was not fetched.
# Usage: readme_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"
driver=$root/build/driver/libsqlite3odbc.so
if [ ! -e "$driver" ]; then
    echo "skipped: there is no driver at $driver"
    exit 77
fi
mkdir -p "$work/tree/build/demo"
mv "$prefix" "$work/tree/build/demo/prefix"
cp -R "$root/examples" "$work/tree"
ln -s "$root/build/driver" "$work/tree/build/driver"

# The blocks marked sh under the heading Examples, for one shell; what a line "# prints: ..." tells must come out of its
# block.
mkdir "$work/blocks"
awk -v folder="$work/blocks" '
    /^## / { inside = $0 == "## Examples" }
    inside && /^```sh/ { file = sprintf("%s/%02d", folder, ++count); next }
    /^```/ { file = "" }
    file != "" { print > file }' "$root/README.md"
[ "$(ls "$work/blocks" | wc -l)" -ge 6 ] || {
    echo "README.md has fewer than five examples"
    exit 1
}
for block in "$work"/blocks/*; do
    printf 'exec >"%s.out" 2>&1\n' "$block"
    cat "$block"
done >"$work/all.sh"

cd "$work/tree"
TMPDIR=$work bash -eu "$work/all.sh" || failed=1
for block in "$work"/blocks/??; do
    sed -n 's/^# prints: //p' "$block" | while read -r line; do
        grep -qF -- "$line" "$block.out" || echo "does not print \"$line\""
    done >"$work/missing"
    if [ -s "$work/missing" ] || [ ! -e "$block.out" ]; then
        cat "$block" "$block.out" "$work/missing"
        failed=1
    fi
done
exit ${failed:-0}
