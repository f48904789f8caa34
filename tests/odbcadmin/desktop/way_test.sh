#!/bin/bash
# The whole way in windows, from nothing to a data source and back: a driver is registered, a data source made for it with a
# secret, changed and removed, then the driver.
# Usage: way_test.sh XODBCADMIN DRIVER LIBJXSETUP
set -eu
program=$1
driver=$2
setup=$3
. "$(dirname "$0")/display.sh"
open_display 900x700

echo "-- F2 registers a driver; both libraries are tried"
start
press F2
find_window 'Register a Driver'
type_text Sample
press Tab
type_text "$driver"
press Return
find_box 'Register a Driver'
press Return
until_true gone 'Register a Driver'
grep -qx "Driver=$driver" "$HOME/.odbcinst.ini" || fail "$(cat "$HOME/.odbcinst.ini")"
grep -qx "Setup=.*/libjxsetup.so" "$HOME/.odbcinst.ini" || fail "$(cat "$HOME/.odbcinst.ini")"

echo "-- Add... makes a data source for it"
find_window 'Data Sources'
press alt+a
find_window 'Add Data Source'
press Return
find_window 'Data Source Setup'
type_text 'Gehaelter 2026'
press alt+k
type_text Database
press alt+v
type_text '/srv/a & b=c.db'
press alt+a
press alt+k
type_text PWD
press alt+h
type_text 's3cret@&'
press alt+a Return
until_true gone 'Data Source Setup'
until_true gone 'Add Data Source'
cat >"$HOME.display/expected" <<END
[ODBC Data Sources]
Gehaelter 2026=Sample

[Gehaelter 2026]
Driver=$driver
Database=/srv/a & b=c.db
PWD=s3cret@&
END
diff "$HOME.display/expected" "$HOME/.odbc.ini" || fail "the data source is another"

echo "-- Setup... changes it"
find_window 'Data Sources'
press Home Return
find_window 'Data Source Setup'
press alt+s Home alt+v ctrl+a
type_text /new.db
press alt+c alt+k Return
until_true gone 'Data Source Setup'
grep -qx 'Database=/new.db' "$HOME/.odbc.ini" || fail "$(cat "$HOME/.odbc.ini")"
grep -qx 'PWD=s3cret@&' "$HOME/.odbc.ini" || fail "$(cat "$HOME/.odbc.ini")"

echo "-- Delete removes it after a question"
find_window 'Data Sources'
remove_chosen
! grep -q Geh "$HOME/.odbc.ini" || fail "$(cat "$HOME/.odbc.ini")"
finish
echo "all as it should be"
