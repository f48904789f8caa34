#!/bin/bash
# odbcadmin dsn test with Debian's drivers, unchanged: each reaches the server, or opens the file, that is stored.
# Usage: odbcadmin_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"
odbcadmin() { with_libraries "$build/src/odbcadmin/odbcadmin" "$@"; }

# Takes one connection, says something if it must, and keeps the first bytes that come.
listen() { # port greeting-file
    rm -f "$work/packet" "$work/listening"
    python3 - "$1" "$2" "$work/packet" "$work/listening" <<'END' &
import socket, sys
listener = socket.create_server(("127.0.0.1", int(sys.argv[1])))
open(sys.argv[4], "w").close()
connection, _ = listener.accept()
connection.sendall(open(sys.argv[2], "rb").read())
open(sys.argv[3], "wb").write(connection.recv(4096))
END
    listener=$!
    started+=("$listener")
    until_ready "$listener" test -e "$work/listening"
}
reaches() { # name
    refused odbcadmin dsn test "$1" --timeout 20 || return
    wait "$listener"
}
begins_with() { test "$(head -c $((($# * 3 + 1) / 3)) "$work/packet" | od -An -tx1)" = " $*"; }

: >"$work/nothing"
port=$(free_port)
where=(Server=127.0.0.1 "Port=$port" UID=app PWD=geheim)

check "PostgreSQL's driver is registered" odbcadmin driver add PostgreSQL --lib "$drivers/psqlodbcw.so"
check "a data source for it" odbcadmin dsn add Pg --driver PostgreSQL Servername=127.0.0.1 "${where[@]}" Database=shop
listen "$port" "$work/nothing"
check "it reaches the server that is stored" reaches Pg
# The request for an encrypted connection, or the start of one without: both begin with their length.
check "and speaks its language" test -s "$work/packet"

check "FreeTDS is registered" odbcadmin driver add FreeTDS --lib "$drivers/libtdsodbc.so"
check "a data source for it" odbcadmin dsn add Tds --driver FreeTDS "${where[@]}" TDS_Version=7.4
listen "$port" "$work/nothing"
check "it reaches the server that is stored" reaches Tds
check "with a packet of type 18, as before a login" begins_with 12

# MariaDB's server speaks first: protocol 10, its version, a salt, what it can do, how users prove themselves.
python3 - "$work/greeting" <<'END'
import struct, sys
body = (b"\x0a5.5.5-10.11.6-MariaDB\0" + struct.pack("<I", 1) + b"12345678\0" + struct.pack("<HBHHB", 0xF7FF, 45, 2, 0x0008, 21)
        + b"\0" * 10 + b"123456789012\0" + b"mysql_native_password\0")
open(sys.argv[1], "wb").write(struct.pack("<I", len(body)) + body)
END
check "MariaDB's driver is registered" odbcadmin driver add MariaDB --lib "$drivers/libmaodbc.so"
check "a data source for it" odbcadmin dsn add My --driver MariaDB "${where[@]}" Database=shop
listen "$port" "$work/greeting"
check "it reaches the server that is stored" reaches My
check "and logs in as the user that is stored" grep -aq app "$work/packet"

check "MDB's driver is registered" odbcadmin driver add MDBTools --lib "$drivers/libmdbodbc.so"
check "a data source for it" odbcadmin dsn add Mdb --driver MDBTools "Database=$work/books.mdb"
: >"$work/books.mdb"
opens() { # name file
    with_libraries strace -f -qq -e trace=file -o "$work/opened" "$build/src/odbcadmin/odbcadmin" dsn test "$1" || :
    grep -q "\"$2\"" "$work/opened"
}
check "it opens the file that is stored" opens Mdb "$work/books.mdb"

check "SQLite's driver is registered" odbcadmin driver add SQLite3 --lib "$drivers/libsqlite3odbc.so"
check "a data source for it" odbcadmin dsn add Books --driver SQLite3 "Database=$work/books.db"
check "connects" prints "Books: connected, driver sqlite3odbc.so" odbcadmin dsn test Books

without_libraries() { LD_LIBRARY_PATH=$libraries "$build/src/odbcadmin/odbcadmin" "$@"; }
told() { # words command...
    local words=$1
    shift
    "$@" >"$work/printed" 2>&1 || :
    grep -qF -- "$words" "$work/printed" || { cat "$work/printed"; return 1; }
}
check "where no libodbcinst.so.2 is found, the doctor says where one is" \
    told "Start programs with odbcadmin run -- PROGRAM." without_libraries doctor Tds
check "and where one is, which answers" told "$build/src/jxodbc/libodbcinst.so.2 answers it." odbcadmin doctor Tds
exit $failed
