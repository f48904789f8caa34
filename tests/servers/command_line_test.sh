#!/bin/bash
# From Debian's PostgreSQL driver to rows by the command alone, and what the doctor says of what goes wrong with it.
# Usage: command_line_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"
. "$(dirname "$0")/postgresql_server.sh"

# The drivers' client libraries are where a system has them; no libodbcinst.so.2 is.
admin() { LD_LIBRARY_PATH=$libraries "$build/src/odbcadmin/odbcadmin" "$@"; }
template=$fetched/usr/share/psqlodbc/odbcinst.ini.template
driver=$drivers/psqlodbcw.so

# ---- four commands ----
check "scan finds the driver under the name that it looks up itself" prints "'PostgreSQL Unicode' --lib $driver" \
    admin driver scan "$drivers"
check "scan knows the others, too" prints "'MariaDB Unicode' --lib" admin driver scan "$drivers"
check "adopt registers it" prints "Registered driver PostgreSQL Unicode" \
    admin driver adopt "PostgreSQL Unicode" --in "$drivers"
add() {
    admin dsn add Sales --driver "PostgreSQL Unicode" Servername=127.0.0.1 Port="$port" Database=postgres Username=app \
        Password --stdin <"$work/password"
}
check "add reads the password from standard input" prints "Added data source Sales" add
check "test connects" prints "Sales: connected" admin dsn test Sales
check "and says whose libodbcinst.so.2 the driver had" prints "odbcadmin run -- PROGRAM" admin dsn test Sales
rows() { admin run -- "$programs/try_driver" "$driver" DSN=Sales "select 'Köln'"; }
check "a program gets rows" prints "row: Köln" rows

check "the template gives the same driver" prints "unchanged: nothing to do" admin driver add -f "$template" "PostgreSQL Unicode"
check "scan says where it is registered" prints "# $driver is registered: PostgreSQL Unicode, $HOME/.odbcinst.ini:" \
    admin driver scan "$drivers"
check "the doctor finds no error" admin doctor Sales
check "it says that the loader finds no installer library" prints library.installer-missing admin doctor Sales
log() { admin run --log -- "$programs/try_driver" "$driver" DSN=Sales; }
check "the log shows what the driver looks up" prints "	Servername	$HOME/.odbc.ini:" log
hides_password() { ! log 2>&1 | grep -q "geh heim"; }
check "and no password" hides_password
look_up_keys() { admin run --log --json -- "$programs/try_driver" "$driver" DSN=Sales 2>&1 | grep -c '"section":"Sales"'; }
check "as JSON it has a line for each look-up" test "$(look_up_keys)" -gt 40

# What the log shows is what is known of the driver.
known_keys() { sed -n 's/^\[Key \(.*\)\]$/\1/p' "$1" | tr '[:upper:]' '[:lower:]' | sort; }
asked_keys() { # driver
    admin run --log -- "$programs/try_driver" "$1" DSN=Known 2>&1 >/dev/null | cut -f4,5 | sed -n 's/^Known	//p' | tr '[:upper:]' '[:lower:]' | grep -vx driver | sort -u
}
is_known() { # driver file
    printf '[Known]\nDriver=%s\nServer=127.0.0.1\nPort=1\nDatabase=%s/known.db\n' "$1" "$work" >"$HOME/known.ini"
    diff <(ODBCINI=$HOME/known.ini asked_keys "$1") <(known_keys "$build/../../share/drivers/$2")
}
check "PostgreSQL's keys are those that are known" is_known "$driver" postgresql.ini
check "MariaDB's" is_known "$drivers/libmaodbc.so" mariadb.ini
check "FreeTDS's" is_known "$drivers/libtdsodbc.so" freetds.ini
check "SQLite's" is_known "$drivers/libsqlite3odbc.so" sqlite.ini

# ---- a dozen ways to break it ----
cp "$HOME/.odbc.ini" "$work/good.odbc.ini"
cp "$HOME/.odbcinst.ini" "$work/good.odbcinst.ini"
mend() {
    cp "$work/good.odbc.ini" "$HOME/.odbc.ini"
    cp "$work/good.odbcinst.ini" "$HOME/.odbcinst.ini"
    chmod 600 "$HOME/.odbc.ini"
}
broken() { # what identifier command...
    local what=$1 id=$2
    shift 2
    mend
    "$@"
    check "$what: $id" says "$id" Sales
}
in_sources() { sed -i "$1" "$HOME/.odbc.ini"; }
in_drivers() { sed -i "$1" "$HOME/.odbcinst.ini"; }
use_library() { in_drivers "s|^Driver=.*|Driver=$1|" && in_sources "s|^Driver=.*|Driver=$1|"; }
half_of_driver() { head -c 100000 "$driver" >"$work/half.so" && use_library "$work/half.so"; }
text_for_driver() { echo "no library" >"$work/text.so" && use_library "$work/text.so"; }
secret_is() { # mode
    in_sources "s|^Password=.*|Password@file=$work/secret|"
    echo "geh heim" >"$work/secret"
    chmod "$1" "$work/secret"
}
broken "the library is gone" library.missing use_library "$drivers/psqlodbcx.so"
broken "its directory is gone" library.directory-missing use_library /no/such/psqlodbcw.so
broken "quotes around the path" names.quoted-path in_drivers "s|^Driver=.*|Driver=\"$driver\"|"
broken "a comment behind the path" names.comment-in-value in_drivers "s|^Driver=.*|& ; the driver|"
broken "the driver's name is misspelt" names.driver-unknown in_sources "s/^Sales=.*/Sales=PostgreSQL Unicoed/"
broken "a bracket is missing" syntax.unclosed-bracket in_sources "s/^\[Sales\]/[Sales/"
broken "a key is misspelt" names.key-misspelt in_sources "s/^Servername=/Sevrername=/"
broken "a key that the driver never asks for" names.key-not-asked in_sources "s/^Password=/PWD=/"
broken "the library was copied in part" library.cut-short half_of_driver
broken "a text stands in its place" library.text text_for_driver
broken "everybody may read the password" files.password-open chmod 644 "$HOME/.odbc.ini"
broken "the secret's file is missing" reference.refused in_sources "s|^Password=.*|Password@file=$work/none|"
broken "everybody may write the secret's file" reference.refused secret_is 666
broken "the secret and its reference" reference.hidden in_sources "s|^Password=.*|&\nPassword@file=$work/none|"
broken "lines end as on other systems" syntax.carriage-return in_sources 's/$/\r/'
mend
check "mended, it connects" prints "Sales: connected" admin dsn test Sales

# ---- the password outside the file ----
secret_is 600
check "with the secret outside the file it connects" prints "Sales: connected" admin dsn test Sales
check "the doctor agrees" admin doctor Sales
mend
check "set stores where the secret lies" admin dsn set Sales Password --from-file "$work/secret"
check "and removes the password" refused grep -q "geh heim" "$HOME/.odbc.ini"
check "it connects" prints "Sales: connected" admin dsn test Sales
exit $failed
