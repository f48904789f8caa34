#!/bin/bash
# A program with raised rights: the user who starts it must not choose its files through the environment.
# Usage: raised_rights_test.sh WRITE-ONCE
set -u
if [ "$(id -u)" != 0 ]; then
    echo 'SKIPPED: only root can give a program the rights of another user'
    exit 77
fi
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
chmod 777 "$dir"
cp "$1" "$dir/plain"
cp "$1" "$dir/raised"
chmod 755 "$dir/plain"
chown 65534 "$dir/raised"
chmod 4755 "$dir/raised"
account=$(getent passwd 65534 | cut -d: -f6)
if [ -e "$account" ] || [ "$(findmnt -no OPTIONS -T "$dir" | grep -cw nosuid)" != 0 ]; then
    echo 'SKIPPED: user 65534 has a home directory here, or programs cannot have raised rights'
    exit 77
fi
failed=0

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
