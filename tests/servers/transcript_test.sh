#!/bin/bash
# Plays the console of docs/recipes.md as a new user on a machine that has nothing but Debian's driver: the commands as
# they stand there must answer what stands there.
# Usage: transcript_test.sh BUILD PROGRAMS
. "$(dirname "$0")/servers.sh"
. "$(dirname "$0")/postgresql_server.sh"
root=$(cd "$(dirname "$0")/../.." && pwd)

at_server() { # database statement...
    local database=$1
    shift
    try_driver "$drivers/psqlodbcw.so" \
        "Servername=localhost;Port=$port;Database=$database;Username=app;Password=geh heim" "$@" >"$work/out" 2>&1 || {
        cat "$work/out"
        exit 1
    }
}
at_server postgres "create database shop"
at_server shop "create table goods (name text, price numeric)" "insert into goods values ('Brot', 4.20), ('Wein', 12.50)"

mkdir "$work/new" "$work/etc"
cp "$work/password" "$work/new/password"
chmod 600 "$work/new/password"
as_new_user() { # command line
    env -i HOME="$work/new" ODBCSYSINI="$work/etc" LC_ALL=C.UTF-8 PATH="$build/src/odbcadmin:$programs:/usr/bin:/bin" \
        LD_LIBRARY_PATH="$libraries" bash -c "cd; $1"
}
awk '/^```console/ { inside = 1; next } /^```/ { inside = 0 } inside' "$root/docs/recipes.md" >"$work/expected"
grep '^\$ ' "$work/expected" | while read -r line; do
    echo "$line"
    # Only the test's server is not where servers usually are.
    as_new_user "$(sed "s/5432/$port/" <<<"${line#\$ }")" 2>&1 || echo "[$?]"
done | sed "s#$libraries#/usr/lib/x86_64-linux-gnu#g; s#$work/new#/home/anna#g; s#$port#5432#g; s/ *$//" >"$work/played"
# Debian mends the versions of its packages.
without_versions() { sed -E 's/(driver|database) ([^ ]+ ?[^ ,]*) [0-9.]+/\1 \2 VERSION/g' "$work/$1"; }
check "they are four commands" test "$(grep -c '^\$ ' "$work/expected")" -eq 4
check "they answer what is written there" diff <(without_versions expected) <(without_versions played)
check "the program does not start without odbcadmin run" refused as_new_user "query Shop 'select 1'"
check "the files are the user's own" test "$(stat -c %a "$work/new/.odbc.ini")" = 600
check "nothing was written for all users" test -z "$(ls -A "$work/etc")"
exit $failed
