#!/bin/bash
# Runs the demo's program on the installed package and the unpacked database driver. Skipped where the driver was not
# fetched (scripts/fetch-driver build/driver).
# Usage: demo_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"
driver=$root/build/driver/libsqlite3odbc.so
if [ ! -e "$driver" ]; then
    echo "skipped: there is no driver at $driver"
    exit 77
fi
mkdir "$work/home" "$work/data"
cc -std=c99 -Wall -Wextra -Wconversion -Wshadow -pedantic -Werror -o "$work/demo" "$root"/examples/demo.c \
    "$root"/examples/driver.c -I"$prefix/include/jxodbc" -L"$prefix/lib" -Wl,-rpath,"$prefix/lib" -lodbcinst
HOME=$work/home "$work/demo" "$prefix" "$driver" "$work/data"

# A step that does not do what it says ends in a failure: here, a setup library that cannot be loaded.
mkdir "$work/home2" "$work/data2"
if HOME=$work/home2 "$work/demo" "$work" "$driver" "$work/data2" >"$work/log"; then
    echo "the demo succeeds without a setup library"
    exit 1
fi
grep -q 'FAILED 3. Add data source Sales' "$work/log"
