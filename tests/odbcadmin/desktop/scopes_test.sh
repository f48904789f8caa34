#!/bin/bash
# The system's data sources and drivers in the windows of xodbcadmin: clicks on their rows, and what becomes of the files.
# Usage: scopes_test.sh XODBCADMIN LIBJXSETUP
set -eu
program=$1
setup=$2
. "$(dirname "$0")/display.sh"

system_has() { grep -qxF "$1" "$ODBCSYSINI/$2"; }
system_lacks() { ! system_has "$@"; }

open_display 900x700
write_sources Sales Stock
cp "$HOME/.odbc.ini" "$HOME.display/before"
printf '[Sales]\nDriver=Theirs\nServer=db1\n[Accounts]\nDriver=Theirs\n' >"$ODBCSYSINI/odbc.ini"
printf '[Theirs]\nDriver=/d.so\n[SQLite3]\nDriver=/d.so\n' >"$ODBCSYSINI/odbcinst.ini"
start

echo "-- a double click on the system's row shows its keys, and OK stores what is typed"
xdotool mousemove --window "$window" 60 78 click --repeat 2 --delay 30 1
find_window 'Setup of Sales \(System\)'
press alt+e
type_text Port
press Tab
type_text 5
press Return
until_true system_has Port=5 odbc.ini
until_true gone 'Setup of Sales \(System\)'

echo "-- the system's row is chosen, Delete asks, No leaves it, Yes removes it; the user's of that name stays"
find_window 'Data Sources'
click 60 78
click 476 78
find_box 'Data Sources'
click_answer 0
until_true is_alone 'Data Sources'
find_window 'Data Sources'
system_has '[Sales]' odbc.ini || fail "it was removed"
click 60 78
click 476 78
find_box 'Data Sources'
click_answer 1
until_true system_lacks '[Sales]' odbc.ini
until_true is_alone 'Data Sources'
system_has '[Accounts]' odbc.ini || fail "Accounts is gone"
cmp "$HOME/.odbc.ini" "$HOME.display/before" || fail "the user's file has changed"

echo "-- the user's row is removed, and nothing of the system's"
find_window 'Data Sources'
cp "$ODBCSYSINI/odbc.ini" "$HOME.display/before"
click 60 42
remove_chosen
lacks_source Sales || fail "Sales is there"
cmp "$ODBCSYSINI/odbc.ini" "$HOME.display/before" || fail "the system's file has changed"

echo "-- F8 shows the system's only: what is chosen then is one of them"
press F8
find_window 'What Is Shown'
press alt+y Return
until_true gone 'What Is Shown'
find_window 'Data Sources'
click 60 42
click 476 78
find_box 'Data Sources'
click_answer 1
until_true system_lacks '[Accounts]' odbc.ini
until_true is_alone 'Data Sources'
has_source Stock || fail "Stock is gone"

echo "-- a data source of the system's driver is made for all users"
find_window 'Data Sources'
press alt+a
find_window 'Add Data Source'
click 60 60
press Return
find_window 'New Data Source of Theirs'
type_text Web
press alt+a Return
until_true system_has '[Web]' odbc.ini
until_true gone 'New Data Source of Theirs'
until_true gone 'Add Data Source'
lacks_source Web || fail "the user has it as well"

echo "-- a driver of the system is unregistered, and the user's of that name stays"
find_window 'Data Sources'
cp "$HOME/.odbcinst.ini" "$HOME.display/before"
click 476 142
find_window 'ODBC Drivers'
click 60 78
press alt+e
find_window 'Remove a Driver'
press y
until_true system_lacks '[SQLite3]' odbcinst.ini
until_true gone 'Remove a Driver'
system_has '[Theirs]' odbcinst.ini || fail "Theirs is gone"
cmp "$HOME/.odbcinst.ini" "$HOME.display/before" || fail "the user's drivers have changed"
find_window 'ODBC Drivers'
press Escape
until_true gone 'ODBC Drivers'
find_window 'Data Sources'
finish
echo "all as it should be"
