#!/bin/bash
# A program with raised rights: the user who starts it must not choose its files through the environment.
# Usage: raised_rights_test.sh WRITE-ONCE
set -u
. "$(dirname "$0")/../../support/raised.sh"
raised raised 4755

# expect PROGRAM RESULT: starts it as user 65533 with every variable pointing here; step 7 is the lock, errno 2 ENOENT.
expect() {
    local printed
    printed=$(HOME=$dir ODBCINI=$dir/own.ini setpriv --reuid 65533 --regid 65533 --clear-groups \
        "$dir/$1" .odbc.ini A k 1 2>&1)
    [ "$printed" = "$2" ] && return
    echo "FAILED: $1 printed '$printed', not '$2'"
    failed=1
}

expect raised '0 7 2' # the account's home directory, which is not there
if [ -e "$dir/own.ini" ] || [ -e "$dir/.odbc.ini" ]; then
    echo 'FAILED: the environment chose the file'
    failed=1
fi
expect plain '1 0 0'
[ -e "$dir/own.ini" ] || { echo 'FAILED: the environment did not choose the file of an ordinary program'; failed=1; }
exit $failed
