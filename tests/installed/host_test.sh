#!/bin/bash
# Builds the example host with the given compiler against the installed package and works with its dialogs as a user
# would, by lines of text.
# Usage: host_test.sh CMAKE BUILD C-COMPILER [FLAGS]
. "$(dirname "$0")/install.sh"
"$1" -std=c99 -Wall -Wextra -Wconversion -Wshadow -pedantic -Werror ${2:-} -o "$work/host" "$root/examples/host.c" \
    -I"$prefix/include/jxodbc" -L"$prefix/lib" -Wl,-rpath,"$prefix/lib" -lodbcinst -ljxutl08 -rdynamic
export HOME=$work/home
mkdir "$HOME"
printf '[ODBC Drivers]\nSample\a Driver=Installed\n\n[Sample\a Driver]\nDriver=/opt/sample.so\nSetup=%s\n' \
    "$prefix/lib/libjxsetup.so" >"$HOME/.odbcinst.ini"

# lines: the actions on standard input; what the host shows goes to $work/shown.
run() {
    "$work/host" >"$work/shown" 2>"$work/errors"
    [ ! -s "$work/errors" ]
}

# text: the whole standard input stands in what was shown.
shown() {
    expected=$(cat)
    [[ $(<"$work/shown") == *"$expected"* ]] || {
        printf 'This was not shown:\n%s\nbut this:\n' "$expected"
        cat "$work/shown"
        exit 1
    }
}

# Adds a data source through three dialogs, one in front of the other; the setup library's own is the last.
run <<'END'
press 107
double 101 0
type 201 Sales
type 207 PWD
type 209 hush
press 204
press 1
press 104
END
shown <<'END'
Data Sources
  label    0 &Data sources (driver):
  list   103 
  button 105 &Setup... (grey)
  button 106 D&elete (grey)
  button 107 &Add...
  button 108 D&rivers...
  button 109 &Options...
  button 104 &Close

Add Data Source
  label    0 &Driver for the new data source:
  list   101 
      Sample? Driver
END
shown <<'END'
  edit   207 PWD
  label    0 &Value:
  edit   208  (grey)
  label    0 &Hidden value:
  edit   209 (hidden)
END
shown <<'END'
  list   103 
    > Sales (Sample? Driver)
  button 105 &Setup...
END
diff "$HOME/.odbc.ini" - <<END
[ODBC Data Sources]
Sales=Sample$(printf '\a') Driver

[Sales]
Driver=/opt/sample.so
PWD=hush
END

# Traces, and removes the data source after a question; the first answer leaves it.
run <<'END'
press 109
check 111
press 1
press 106
no
press 106
yes
press 105
press 104
END
shown <<'END'
  check  111 [x] &Trace the calls of the driver manager
END
shown <<'END'
KALDERO ODBC Admin: Remove the data source "Sales"?
Its settings are deleted and cannot be restored. (yes or no)
END
shown <<'END'
The dialog does not take that.
END
diff "$HOME/.odbc.ini" - <<'END'
[ODBC Data Sources]

[ODBC]
Trace=1
TraceAutoStop=0
TraceFile=sql.log
END

# Where the lines end, every dialog that is open is closed.
printf 'press 107\nsomething else\n' | run
shown <<'END'
The dialog does not take that.
END
