#!/bin/bash
# A program with raised rights ignores the environment and reads the files of the account it runs as.
# Usage: read_test.sh READ-ONCE
set -u
if [ "$(id -u)" != 0 ]; then
    echo 'SKIPPED: only root can give a program the rights of another user'
    exit 77
fi
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
chmod 755 "$dir"
cp "$1" "$dir/plain"
cp "$1" "$dir/user"
cp "$1" "$dir/group"
chmod 755 "$dir/plain"
chown 65534 "$dir/user"
chmod 4755 "$dir/user"
chgrp 65534 "$dir/group"
chmod 2755 "$dir/group"
account=$(getent passwd 65534 | cut -d: -f6)
if [ -e "$account" ] || [ "$(findmnt -no OPTIONS -T "$dir" | grep -cw nosuid)" != 0 ]; then
    echo 'SKIPPED: user 65534 has a home directory here, or programs cannot have raised rights'
    exit 77
fi
printf '[A]\nk=home\n' > "$dir/.odbc.ini"
printf '[A]\nk=own\n' > "$dir/own.ini"
chmod 644 "$dir/.odbc.ini" "$dir/own.ini"
failed=0

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
