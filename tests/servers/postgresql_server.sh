# A PostgreSQL server of the test's own, with a user app; sourced after servers.sh. Sets port; the password is in
# $work/password.
cp -R "$fetched/usr" "$work/usr"
bin=$(echo "$work"/usr/lib/postgresql/*/bin)
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
await_server "$server"
# It listens before it takes anybody in.
until_ready "$server" grep -q "ready to accept connections" "$work/server" || {
    cat "$work/server"
    exit 1
}
