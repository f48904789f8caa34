#!/bin/bash
# A setup library that crashes or exits takes the windows of xodbcadmin along; another window says which one it was.
# Usage: ends_test.sh XODBCADMIN CRASHING_SETUP
set -eu
program=$1
setup=$2
. "$(dirname "$0")/display.sh"
open_display 900x700
told=$HOME.display/told

# end_in ROW: sets up the data source of that row and finds the message.
end_in() {
    "$program" 2>"$told" &
    running=$!
    find_window 'Data Sources'
    press Home
    for ((row = 0; row < $1; ++row)); do press Down; done
    press Return
    find_window 'Setup library'
    until_true gone 'Data Sources'
}
expect_end() {
    local code=0
    { wait $running || code=$?; } 2>/dev/null
    running=
    [ $code -eq "$1" ] || fail "exit code $code"
    [ "$(cat "$told")" = "$2" ] || fail "$(cat "$told")"
}
write_sources Crash Exit

echo "-- a crash is named, and the program ends of its signal"
end_in 0
press Escape
expect_end 139 "xodbcadmin: The setup library $setup of driver SQLite3 crashed, which ended xodbcadmin: signal 11 (Segmentation fault)."

echo "-- an exit is named, too"
end_in 1
press Return
expect_end 5 "xodbcadmin: The setup library $setup of driver SQLite3 ended xodbcadmin with code 5."

echo "-- Yes begins anew, with the same arguments"
mkdir "$HOME/other"
mv "$HOME/.odbc.ini" "$HOME/.odbcinst.ini" "$HOME/other"
"$program" --home "$HOME/other" 2>"$told" &
running=$!
find_window 'Data Sources'
press Home Return
find_window 'Setup library'
press y
find_window 'Data Sources'
press Home Return
find_window 'Setup library'
press y
find_window 'Data Sources'
finish

echo "-- a signal to the program closes its windows, without a message"
"$program" --home "$HOME/other" 2>"$told" &
running=$!
find_window 'Data Sources'
kill $running
until_true gone 'Data Sources'
expect_end 143 ''
! titled 'Setup library' || fail "there is a message"
echo "all as it should be"
