#!/bin/bash
# MariaDB's driver, unchanged, with libodbcinst.so.2 and a server of the test's own.
# Usage: mariadb_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"
cp -R "$fetched/usr" "$work/usr"
own_libraries=$work/usr/lib/$(basename "$libraries")
share=$work/usr/share/mysql
data=$work/data
mkdir "$data"
[ "$(id -u)" -ne 0 ] || chown 65534:65534 "$data"
port=$(free_port)
mariadbd=("${ordinary[@]}" LD_LIBRARY_PATH="$own_libraries" "$work/usr/sbin/mariadbd" --no-defaults --datadir="$data"
    --lc-messages-dir="$share" --character-sets-dir="$share/charsets" --pid-file="$data/pid")
# It takes one statement a line.
{
    printf '%s\n' "create database mysql;" "use mysql;"
    cat "$share"/mysql_{system_tables,performance_tables,system_tables_data}.sql
    printf '%s\n' "flush privileges;" "create user app@'%' identified by 'geheim';" "grant all on *.* to app@'%';" \
        "create database shop;"
} | "${mariadbd[@]}" --bootstrap >"$work/bootstrap" 2>&1 || {
    cat "$work/bootstrap"
    exit 1
}
"${mariadbd[@]}" --port="$port" --bind-address=127.0.0.1 --socket="$data/socket" --character-set-server=utf8mb4 >"$work/server" 2>&1 &
server=$!
await_server "$server"

template=$fetched/usr/share/odbc-mariadb/odbcinst.ini.template
driver=$drivers/libmaodbc.so
check "the driver is installed from its template" install_from_template "$template" "MariaDB Unicode" "$driver"
where=("SERVER=127.0.0.1" "PORT=$port" "DATABASE=shop" "UID=app" "CHARSET=utf8mb4")
check "a user's data source" configure add "MariaDB Unicode" DSN=Bücher "${where[@]}" PWD=geheim
check "a system's data source" configure add-system "MariaDB Unicode" DSN=Stock "${where[@]}" PWD=geheim
statements=("create table t (id int primary key, name text character set utf8mb4)" "insert into t values (1, 'Köln'), (2, '東京')"
    "update t set name = 'Zürich' where id = 1" "delete from t where id = 2" "select name from t")
check "the user's data source connects, creates, inserts, updates, deletes" \
    prints "Zürich" try_driver "$driver" DSN=Bücher "${statements[@]}"
check "the same through SQLDriverConnectW" try_driver -w "$driver" DSN=Stock
check "the system's data source connects" prints "Zürich" try_driver "$driver" DSN=Stock "select name from t"

check "a data source without a password" configure add "MariaDB Unicode" DSN=Secret "${where[@]}"
check "does not connect" refused try_driver "$driver" DSN=Secret
echo 'PWD@env=JX_TEST_PASSWORD' >>"$HOME/.odbc.ini"
check "with PWD@env it does" prints "row: 1" env JX_TEST_PASSWORD=geheim bash -c \
    "LD_LIBRARY_PATH='$build/src/jxodbc:$libraries' '$programs/try_driver' '$driver' DSN=Secret 'select 1'"
check "46 look-ups a connection" look_ups 46 try_driver "$driver" DSN=Bücher
measured "$driver" DSN=Bücher
check "the log shows no password" refused grep -q geheim "$work/log"
check "8 threads connect while another process writes the files" \
    while_written "MariaDB Unicode" try_driver -t "$driver" DSN=Bücher "select name from t"
check "odbcadmin dsn test connects" prints "Bücher: connected" with_libraries "$build/src/odbcadmin/odbcadmin" dsn test Bücher
exit $failed
