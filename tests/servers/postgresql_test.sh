#!/bin/bash
# PostgreSQL's driver, unchanged, with libodbcinst.so.2 and a server of the test's own.
# Usage: postgresql_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"
bin=$(echo "$fetched"/usr/lib/postgresql/*/bin)
cp -R "$fetched/usr" "$work/usr"
bin=$work${bin#"$fetched"}
data=$work/data
mkdir "$data"
[ "$(id -u)" -ne 0 ] || chown 65534:65534 "$data"
port=$(free_port)
echo "geh heim" >"$work/password"
chmod 644 "$work/password"
own_libraries=$work/usr/lib/$(basename "$libraries")
"${ordinary[@]}" LD_LIBRARY_PATH="$own_libraries" "$bin/initdb" -D "$data" -U app --pwfile="$work/password" -A scram-sha-256 \
    -E UTF8 --locale=C.UTF-8 --no-sync >"$work/initdb" 2>&1 || {
    cat "$work/initdb"
    exit 1
}
"${ordinary[@]}" LD_LIBRARY_PATH="$own_libraries" "$bin/postgres" -D "$data" -p "$port" -c listen_addresses=127.0.0.1 \
    -c unix_socket_directories="$data" -c fsync=off >"$work/server" 2>&1 &
server=$!
started+=("$server")
listens() { exec 9<>"/dev/tcp/127.0.0.1/$port" && exec 9>&-; }
until_ready "$server" listens || {
    cat "$work/server"
    exit 1
}

template=$fetched/usr/share/psqlodbc/odbcinst.ini.template
check "the Unicode driver is installed from its template" \
    install_from_template "$template" "PostgreSQL Unicode" "$drivers/psqlodbcw.so"
check "the ANSI driver is installed from its template" \
    install_from_template "$template" "PostgreSQL ANSI" "$drivers/psqlodbca.so"
where=("Servername=127.0.0.1" "Port=$port" "Database=postgres" "UserName=app")
check "a user's data source" configure add "PostgreSQL Unicode" "DSN=Bücher" "${where[@]}" "Password=geh heim"
check "a system's data source" configure add-system "PostgreSQL ANSI" DSN=Stock "${where[@]}" "Password=geh heim"

statements=("create table \"Größe\" (id int primary key, name text)" "insert into \"Größe\" values (1, 'Köln'), (2, '東京')"
    "update \"Größe\" set name = 'Zürich' where id = 1" "delete from \"Größe\" where id = 2" "select name from \"Größe\"")
check "the user's data source connects, creates, inserts, updates, deletes" \
    prints "Zürich" try_driver "$drivers/psqlodbcw.so" "DSN=Bücher" "${statements[@]}"
check "the same through SQLDriverConnectW" try_driver -w "$drivers/psqlodbcw.so" DSN=Stock
check "the system's data source connects" \
    prints "Zürich" try_driver "$drivers/psqlodbca.so" DSN=Stock "select name from \"Größe\""

# The password outside the file: the driver asks for Password and never for PWD.
check "a data source without a password is refused by the server" configure add "PostgreSQL Unicode" DSN=Secret "${where[@]}"
check "it does not connect" refused try_driver "$drivers/psqlodbcw.so" DSN=Secret
chmod 600 "$work/password"
printf 'Password@file=%s\n' "$work/password" >>"$HOME/.odbc.ini"
check "with Password@file it does" prints "row: 1" try_driver "$drivers/psqlodbcw.so" DSN=Secret "select 1"
try_writable() {
    chmod 666 "$work/password"
    try_driver "$drivers/psqlodbcw.so" DSN=Secret
}
check "a password that others may write is not used" \
    refused try_writable
chmod 600 "$work/password"

check "50 look-ups a connection" look_ups 50 try_driver "$drivers/psqlodbcw.so" DSN=Bücher
measured "$drivers/psqlodbcw.so" DSN=Bücher
check "16 with DRIVER=" look_ups 16 try_driver "$drivers/psqlodbcw.so" \
    "DRIVER=PostgreSQL Unicode;SERVER=127.0.0.1;PORT=$port;DATABASE=postgres;UID=app;PWD=geh heim"
check "the log shows no password" refused grep -q "geh heim" "$work/log"

check "8 threads connect while another process writes the files" \
    while_written "PostgreSQL ANSI" try_driver -t "$drivers/psqlodbcw.so" "DSN=Bücher" "select name from \"Größe\""

check "odbcadmin dsn test connects" prints "Bücher: connected" with_libraries "$build/src/odbcadmin/odbcadmin" dsn test Bücher
check "the driver is removed with its data sources" configure remove "PostgreSQL Unicode"
check "they are gone" refused grep -q Bücher "$HOME/.odbc.ini"
exit $failed
