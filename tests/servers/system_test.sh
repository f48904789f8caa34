#!/bin/bash
# Debian's PostgreSQL driver for all users, from the command alone: in the system's files of a directory of its own and in
# an image, and what the doctor says of what goes wrong there.
# Usage: system_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"
. "$(dirname "$0")/postgresql_server.sh"

admin() { LD_LIBRARY_PATH=$libraries "$build/src/odbcadmin/odbcadmin" "$@"; }
for_all() { admin --system "$@"; }
keys=(Servername=127.0.0.1 Port="$port" Database=postgres Username=app)
umask 022
cp "$work/password" "$work/secret"
chmod 600 "$work/secret"

# ---- the system's files ----
check "adopt registers the driver for all users" prints "Registered driver PostgreSQL Unicode" \
    for_all driver adopt "PostgreSQL Unicode"
check "scan says so" prints "is registered: PostgreSQL Unicode, $ODBCSYSINI/odbcinst.ini:" admin driver scan "$drivers"
with_password() { for_all dsn add Stock --driver "PostgreSQL Unicode" "${keys[@]}" Password --stdin <"$work/password"; }
check "a password does not go into a file that everybody may read" refused with_password
check "nothing was written" test ! -e "$ODBCSYSINI/odbc.ini"
check "a data source goes without one" for_all dsn add Stock --driver "PostgreSQL Unicode" "${keys[@]}"
check "its password stays outside" for_all dsn set Stock Password --from-file "$work/secret"
check "everybody may read the file" test "$(stat -c %a "$ODBCSYSINI/odbc.ini")" = 644
check "test connects" prints "Stock: connected" admin dsn test Stock
rows() { admin run -- "$programs/try_driver" "$drivers/psqlodbcw.so" DSN=Stock "select 'Köln'"; }
check "a program gets rows" prints "row: Köln" rows
check "the user has no file" test ! -e "$HOME/.odbc.ini"
check "the doctor finds no error" admin doctor Stock

# ---- what goes wrong ----
cp "$ODBCSYSINI/odbc.ini" "$work/good.odbc.ini"
cp "$ODBCSYSINI/odbcinst.ini" "$work/good.odbcinst.ini"
broken() { # what identifier command...
    local what=$1 id=$2
    shift 2
    cp "$work/good.odbc.ini" "$ODBCSYSINI/odbc.ini"
    cp "$work/good.odbcinst.ini" "$ODBCSYSINI/odbcinst.ini"
    rm -f "$HOME/.odbc.ini" "$HOME/.odbcinst.ini"
    "$@"
    check "$what: $id" says "$id" Stock
}
in_sources() { sed -i "$1" "$ODBCSYSINI/odbc.ini"; }
in_drivers() { sed -i "$1" "$ODBCSYSINI/odbcinst.ini"; }
own() { printf '[Stock]\nDriver=%s\n' "$drivers/psqlodbcw.so" >"$HOME/.odbc.ini"; }
fifo() { rm "$ODBCSYSINI/odbc.ini" && mkfifo "$ODBCSYSINI/odbc.ini"; }
broken "a user's section hides the system's" scopes.split own
check "this user cannot connect" refused admin dsn test Stock
check "others can" prints "Stock: connected" for_all dsn test Stock
broken "the library is gone" library.missing in_drivers "s|^Driver=.*|Driver=$drivers/psqlodbcx.so|"
broken "the driver's name is misspelt" names.driver-unknown in_sources "s/^Stock=.*/Stock=PostgreSQL Unicoed/"
broken "a bracket is missing" syntax.unclosed-bracket in_sources "s/^\[Stock\]/[Stock/"
broken "a key is misspelt" names.key-misspelt in_sources "s/^Servername=/Sevrername=/"
broken "the secret is missing" reference.refused in_sources "s|^Password@file=.*|Password@file=$work/none|"
broken "everybody may read the password" files.password-open in_sources "s|^Password@file=.*|Password=geheim|"
broken "the file is a FIFO" files.not-regular fifo
rm "$ODBCSYSINI/odbc.ini"
broken "mended, nothing hides anything" library.installer-missing true
check "and it connects" prints "Stock: connected" admin dsn test Stock

# ---- an image ----
in_image() { "$build/src/odbcadmin/odbcadmin" --root "$work" --system "$@"; }
mkdir "$work/etc"
check "adopt finds the driver in the image" prints "Registered driver PostgreSQL Unicode" in_image driver adopt "PostgreSQL Unicode"
check "with the path that it has there" grep -qx "Driver=${drivers#"$fetched"}/psqlodbcw.so" "$work/etc/odbcinst.ini"
check "a data source of the image" in_image dsn add Stock --driver "PostgreSQL Unicode" "${keys[@]}"
check "lint finds no error" in_image lint
check "nothing else was written" diff "$work/good.odbc.ini" "$ODBCSYSINI/odbc.ini"
exit $failed
