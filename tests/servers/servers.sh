# What the tests with real drivers and servers share: folders, a home, a port, servers as an ordinary user. Sourced with
# the arguments of the test: CMAKE-BUILD PROGRAMS. Everything started here is ended by its process id.
set -eu
export LC_ALL=C.UTF-8
build=$1
programs=$2
fetched=$build/../servers
[ -e "$fetched/complete" ] || {
    echo "scripts/fetch-servers build/servers has not run"
    exit 1
}
fetched=$(cd "$fetched" && pwd)
libraries=$(echo "$fetched"/usr/lib/*-linux-gnu)
drivers=$libraries/odbc
work=$(mktemp -d)
chmod 755 "$work"
started=()
end() {
    [ ${#started[@]} -eq 0 ] || kill "${started[@]}" 2>/dev/null || :
    [ ${#started[@]} -eq 0 ] || wait "${started[@]}" 2>/dev/null || :
    rm -rf "$work"
}
trap end EXIT

export HOME=$work/home ODBCSYSINI=$work/system
unset ODBCINI ODBCINSTINI JXODBC_LOG PGPASSWORD PGUSER PGHOST
mkdir "$HOME" "$ODBCSYSINI"

# Before a server's command, which refuses to run as root: words that the command replaces, so that its process id is known.
ordinary=(env HOME="$work")
[ "$(id -u)" -ne 0 ] || ordinary=(setpriv --reuid=65534 --regid=65534 --clear-groups "${ordinary[@]}")

# What programs of the test see: the installer library of this build, and the drivers' own client libraries.
with_libraries() { LD_LIBRARY_PATH=$build/src/jxodbc:$libraries "$@"; }
configure() { with_libraries "$programs/configure" "$@"; }
try_driver() { with_libraries "$programs/try_driver" "$@"; }

# A port that nobody listens on at this moment.
free_port() {
    python3 -c 'import socket; s = socket.socket(); s.bind(("127.0.0.1", 0)); print(s.getsockname()[1])'
}

# Tries a command until it succeeds, as long as process $1 runs.
until_ready() { # pid command...
    local pid=$1
    shift
    until "$@" >/dev/null 2>&1; do
        kill -0 "$pid" || return 1
        read -rt 0.1 <> <(:) || :
    done
}

# Waits until a server that writes to $work/server listens on $port; it is ended with the test.
listens() { exec 9<>"/dev/tcp/127.0.0.1/$port" && exec 9>&-; }
await_server() { # pid
    started+=("$1")
    until_ready "$1" listens || {
        cat "$work/server"
        exit 1
    }
}

failed=0
check() { # what command...
    local what=$1
    shift
    if "$@" >"$work/out" 2>&1; then
        echo "ok      $what"
    else
        echo "FAILED  $what"
        cat "$work/out"
        failed=1
    fi
}
refused() { ! "$@"; }
# Prints how long a connection takes; nothing depends on it.
measured() { # driver connection-string
    check "it connects 101 times" try_driver -n "$@"
    sed -n 's/^a connection: /        /p' "$work/out"
}
prints() { # words command...
    local words=$1
    shift
    "$@" >"$work/printed" 2>&1 || { cat "$work/printed"; return 1; }
    grep -qF -- "$words" "$work/printed" || { cat "$work/printed"; return 1; }
}

# The template's section as a list for configure install, its library given by a path.
template_list() { # file section driver
    printf '%s\0' "$2" "Driver=$3"
    awk -v section="[$2]" '$0 == section { inside = 1; next } /^\[/ { inside = 0 }
        inside && /=/ && !/^(Driver|Setup)[ \t]*=/ { sub(/[ \t]*=[ \t]*/, "="); printf "%s%c", $0, 0 }' "$1"
}
install_from_template() { # file section driver
    local items=()
    mapfile -d '' items < <(template_list "$@")
    configure install "${items[@]}"
}

# Runs a command while another process writes the files of both scopes without a pause.
write_files() { # driver
    while :; do
        configure add "$1" DSN=Other "Server=a" >/dev/null
        configure add-system "$1" DSN=Other "Server=b" >/dev/null
    done
}
while_written() { # driver command...
    local result=0 writer
    write_files "$1" &
    writer=$!
    shift
    "$@" || result=$?
    kill "$writer"
    wait "$writer" 2>/dev/null || :
    return $result
}

# How often a connection looked something up, by the log.
look_ups() { # expected command...
    local expected=$1
    shift
    rm -f "$work/log"
    JXODBC_LOG=$work/log "$@" >"$work/printed" 2>&1 || :
    [ "$(wc -l <"$work/log")" -eq "$expected" ] || {
        cut -f3- "$work/log"
        return 1
    }
}

# The doctor says that about the data source.
says() { # identifier data-source
    admin doctor "$2" >"$work/said" 2>&1 || :
    grep -q "^[a-z]* $1 " "$work/said" || {
        cat "$work/said"
        return 1
    }
}
