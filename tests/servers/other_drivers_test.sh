#!/bin/bash
# The drivers whose server is a file or cannot be had: SQLite, FreeTDS, MDB; and a client that registers its own driver.
# Usage: other_drivers_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"

check "SQLite's driver is installed" configure install SQLite3 "Driver=$drivers/libsqlite3odbc.so"
check "a data source" configure add SQLite3 DSN=Bücher "Database=$work/books.db"
check "the driver, which loads the library by name, connects" prints "Köln" \
    try_driver "$drivers/libsqlite3odbc.so" DSN=Bücher "create table t (name)" "insert into t values ('Köln')" "select * from t"
check "16 look-ups a connection" look_ups 16 try_driver "$drivers/libsqlite3odbc.so" DSN=Bücher
measured "$drivers/libsqlite3odbc.so" DSN=Bücher

check "FreeTDS is installed from its template" \
    install_from_template "$fetched/usr/share/tdsodbc/odbcinst.ini" FreeTDS "$drivers/libtdsodbc.so"
port=$(free_port)
python3 - "$port" "$work/packet" "$work/listening" <<'END' &
import socket, sys
listener = socket.create_server(("127.0.0.1", int(sys.argv[1])))
open(sys.argv[3], "w").close()
connection, _ = listener.accept()
open(sys.argv[2], "wb").write(connection.recv(4096))
END
listener=$!
started+=("$listener")
until_ready "$listener" test -e "$work/listening"
check "a data source for it" configure add FreeTDS DSN=Tds Server=127.0.0.1 "Port=$port" UID=app "Database=x" TDS_Version=7.4
check "21 look-ups a connection" look_ups 21 try_driver "$drivers/libtdsodbc.so" "DSN=Tds;PWD=x"
wait "$listener" || :
# TDS 7 begins with a packet of type 18, before the login.
check "its first packet reaches the server that the file names" test "$(head -c 1 "$work/packet" | od -An -tx1)" = " 12"

check "MDB's driver is installed" configure install MDBTools "Driver=$drivers/libmdbodbc.so"
check "a data source for it" configure add MDBTools DSN=Mdb "Database=$work/absent.mdb"
# It has not all functions that try_driver calls.
mdb_connect() {
    with_libraries python3 - "$1" <<'END'
import ctypes, sys
driver = ctypes.CDLL(sys.argv[1], 2)
environment, connection = ctypes.c_void_p(), ctypes.c_void_p()
driver.SQLAllocEnv(ctypes.byref(environment))
driver.SQLAllocConnect(environment, ctypes.byref(connection))
driver.SQLDriverConnect(connection, None, b"DSN=Mdb", -3, None, 0, None, 0)
END
}
for library in "$drivers"/libmdbodbc{,W}.so; do
    check "$(basename "$library") looks one name up" look_ups 1 mdb_connect "$library"
    check "and gets the file's" grep -q "Database.*:[0-9]*.$work/absent.mdb" "$work/log"
done

mkdir "$work/elsewhere"
check "a client registers its driver in the next place when the first takes none" env JX_ELSEWHERE="$work/elsewhere" \
    ODBCSYSINI="$work/absent" LD_LIBRARY_PATH="$build/src/jxodbc" "$programs/configure" register-elsewhere Client \
    "Driver=$drivers/libmdbodbc.so" FileUsage=1
check "and takes it out again" refused grep -q Client "$work/elsewhere/odbcinst.ini"
exit $failed
