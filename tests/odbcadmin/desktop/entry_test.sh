#!/bin/bash
# The desktop's entry of xodbcadmin is valid, and its icon is a picture by the name that the entry gives.
# Usage: entry_test.sh FOLDER
set -eu
cd "$1"
told=$(desktop-file-validate xodbcadmin.desktop 2>&1) || true
[ -z "$told" ] || { echo "$told"; exit 1; }
value() { sed -n "s/^$1=//p" xodbcadmin.desktop; }
[ "$(value Exec)" = xodbcadmin ] || { echo "the entry starts $(value Exec)"; exit 1; }
# Desktops find the entry of a window by its class.
grep -qF "kProgramName = \"$(value StartupWMClass)\"" toolkit.h || { echo "windows have another class"; exit 1; }
head -c 4 "$(value Icon).svg" | grep -qF '<svg' || { echo "$(value Icon).svg is no picture"; exit 1; }
