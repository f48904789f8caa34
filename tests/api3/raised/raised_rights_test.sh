#!/bin/bash
# A program with raised rights: the user who starts it chooses neither its files nor its secrets nor a log.
# Usage: raised_rights_test.sh LOOK-UP-ONCE
set -u
. "$(dirname "$0")/../../support/raised.sh"
raised raised 4755
echo secret >"$dir/secret"
printf '[Sales]\nServer=chosen\nPWD@file=%s\nUID@env=JX_TEST_USER\n' "$dir/secret" >"$dir/odbc.ini"
chmod 644 "$dir/secret" "$dir/odbc.ini"

# expect PROGRAM BEGINNING ARGUMENTS...: starts it as user 65533 with every variable pointing here.
expect() {
    local printed
    printed=$(HOME=$dir ODBCINI=$dir/odbc.ini ODBCSYSINI=$dir ODBCINSTINI=$dir/odbc.ini JXODBC_LOG=$dir/$1.log \
        JX_TEST_USER=app setpriv --reuid 65533 --regid 65533 --clear-groups "$dir/$1" "${@:3}" 2>&1)
    [[ $printed == "$2"* ]] && return
    echo "FAILED: $1 ${*:3} printed '$printed', not '$2'"
    failed=1
}

expect plain 'chosen|' odbc.ini Sales Server
expect plain 'chosen|' odbcinst.ini Sales Server
expect plain 'secret|' "$dir/odbc.ini" Sales PWD
expect plain 'app|' "$dir/odbc.ini" Sales UID
expect raised 'none|' odbc.ini Sales Server
expect raised 'none|' odbcinst.ini Sales Server
expect raised 'chosen|' "$dir/odbc.ini" Sales Server
expect raised 'none|The key "PWD@file" of section "Sales"' "$dir/odbc.ini" Sales PWD
expect raised 'none|The key "UID@env" of section "Sales"' "$dir/odbc.ini" Sales UID
[ -e "$dir/plain.log" ] || { echo 'FAILED: an ordinary program wrote no log'; failed=1; }
[ ! -e "$dir/raised.log" ] || { echo 'FAILED: the environment chose a log'; failed=1; }
exit $failed
