# What the tests of programs with raised rights share; to be sourced with the program as $1. Makes the folder $dir, which
# ends with the script, and puts the program there as "plain". Skips the test where no program can have other rights.
if [ "$(id -u)" != 0 ]; then
    echo 'SKIPPED: only root can give a program the rights of another user'
    exit 77
fi
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
chmod 777 "$dir"
cp "$1" "$dir/plain"
chmod 755 "$dir/plain"
account=$(getent passwd 65534 | cut -d: -f6)
if [ -e "$account" ] || [ -e /etc/odbc.ini ] || [ "$(findmnt -no OPTIONS -T "$dir" | grep -cw nosuid)" != 0 ]; then
    echo 'SKIPPED: user 65534 or the system has files here, or programs cannot have raised rights'
    exit 77
fi
failed=0

# raised NAME MODE: a copy of the program "plain" that runs with the rights of user 65534 (4755) or of that group (2755).
raised() {
    cp "$dir/plain" "$dir/$1"
    if [ "$2" = 2755 ]; then chgrp 65534 "$dir/$1"; else chown 65534 "$dir/$1"; fi
    chmod "$2" "$dir/$1"
}
