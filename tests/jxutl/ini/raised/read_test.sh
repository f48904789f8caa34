#!/bin/bash
# A program with raised rights ignores the environment and reads the files of the account it runs as.
# Usage: read_test.sh READ-ONCE
set -u
. "$(dirname "$0")/../../../support/raised.sh"
raised user 4755
raised group 2755
printf '[A]\nk=home\n' > "$dir/.odbc.ini"
printf '[A]\nk=own\n' > "$dir/own.ini"
chmod 644 "$dir/.odbc.ini" "$dir/own.ini"

# expect PROGRAM VALUE [VARIABLE...]: starts it as an account that does not exist.
expect() {
    local printed
    printed=$(env -u ODBCINI "HOME=$dir" "${@:3}" \
        setpriv --reuid 65533 --regid 65533 --clear-groups "$dir/$1" .odbc.ini A k 2>&1)
    [ "$printed" = "$2" ] && return
    echo "FAILED: $1 ${*:3} printed '$printed', not '$2'"
    failed=1
}

expect plain home
expect plain own "ODBCINI=$dir/own.ini"
for program in user group; do
    expect $program none
    expect $program none "ODBCINI=$dir/own.ini"
done
exit $failed
