#!/bin/bash
# Makes real system calls fail, to check that the faults of the other tests are realistic.
# Usage: strace_test.sh WRITE-ONCE
set -u
writer=$1
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
export ASAN_OPTIONS=detect_leaks=0 # it cannot look for leaks in a traced process
target=$dir/x.ini
lock=$dir/x.ini.lock
old=$'[A]\nk=1'
new=$'[A]\nk=2'
failed=0
runs=0

# The numbers of enum JxIniStep and of errno.
LOOK=4 OPEN=5 READ=6 LOCK=7 EMPTY=8 WRITE=9 MODE=10 OWNER=11 FLUSH=12 RENAME=13 DIRECTORY=14 REMOVE=15
EPERM=1 EIO=5 EBUSY=16 EMFILE=24 ENOSPC=28 ENOLCK=37

complain() {
    echo "FAILED: $*"
    failed=1
}

if ! strace -o "$dir/trace" true 2>"$dir/why"; then
    echo "SKIPPED: strace cannot trace here: $(head -1 "$dir/why")"
    exit 77
fi

begin() { # a file to be changed, and nothing else
    rm -f "$dir"/x.ini*
    printf '%s\n' "$old" >"$target"
    chmod 600 "$target"
}

# run WHAT PATH INJECTION VALUE RESULT TEXT: writes k=VALUE with INJECTION done to the calls on PATH.
run() {
    local what=$1 path=$2 injection=$3 value=$4 result=$5 text=$6 printed
    runs=$((runs + 1))
    printed=$(strace -f -o "$dir/trace" -P "$path" -e inject="$injection" "$writer" "$target" A k "$value")
    [ "$printed" = "$result" ] || complain "$what: printed '$printed', not '$result'"
    [ "$(cat "$target")" = "$text" ] || complain "$what: the file holds '$(cat "$target")'"
    grep -q INJECTED "$dir/trace" || complain "$what: nothing was injected"
    [ ! -e "$lock" ] || [ "$what" = 'remove' ] || complain "$what: a lock file was left"
    "$writer" "$target" A k 3 >"$dir/out"
    [ "$(cat "$dir/out")" = '1 0 0' ] || complain "$what: the next write failed"
    [ ! -e "$lock" ] || complain "$what: the next write left a lock file"
}

fault() { # STEP ERRNO WHAT PATH CALL WHEN ERROR: the write fails and the old text stays
    begin
    "${prepare:-true}"
    run "$3" "$4" "$5:error=$7:when=$6" 2 "0 $1 $2" "$old"
}

# Preparations for a fault, called by name.
# shellcheck disable=SC2317
others_may_read() { chmod 644 "$target"; }
# shellcheck disable=SC2317
belongs_to_another() { chown 65534:65534 "$target"; }
# shellcheck disable=SC2317
something_is_left() { (umask 077 && echo left >"$lock"); }

# ---- every step fails ----

fault $LOOK $EIO 'look at the target' "$target" '?lstat,?lstat64,?newfstatat,?fstatat64,?statx' 1 EIO
fault $LOCK $EMFILE 'make the lock file' "$lock" openat 1 EMFILE
fault $LOCK $ENOLCK 'lock' "$lock" flock 1 ENOLCK
fault $OPEN $EMFILE 'open the target' "$target" openat 1 EMFILE
fault $READ $EIO 'read' "$target" read 1 EIO
fault $WRITE $ENOSPC 'write' "$lock" write 1 ENOSPC
fault $FLUSH $EIO 'flush' "$lock" fsync 1 EIO
fault $RENAME $EBUSY 'rename' "$lock" rename 1 EBUSY
prepare=something_is_left fault $EMPTY $EIO 'empty' "$lock" '?ftruncate,?ftruncate64' 1 EIO
prepare=others_may_read fault $MODE $EPERM 'mode' "$lock" fchmod 1 EPERM
if [ "$(id -u)" = 0 ]; then
    prepare=belongs_to_another fault $OWNER $EPERM 'owner' "$lock" '?fchown,?fchown32' 1 EPERM
else
    echo 'Left out: only root can make a file of another user'
fi

begin
run 'remove' "$lock" unlink:error=EIO 1 "0 $REMOVE $EIO" "$old"
begin
run 'flush the directory' "$dir" fsync:error=EIO 2 "0 $DIRECTORY $EIO" "$new"
begin
run 'a directory that cannot be flushed' "$dir" fsync:error=EINVAL 2 '1 0 0' "$new"
begin
run 'a directory that cannot be opened' "$dir" openat:error=EACCES 2 '1 0 0' "$new"
begin
run 'interrupted' "$lock" openat,write,fsync,flock:error=EINTR:when=1..3 2 '1 0 0' "$new"

# ---- killed at every step ----

for call in openat flock write fsync rename; do
    begin
    runs=$((runs + 1))
    {
        strace -f -o "$dir/trace" -P "$lock" -e inject="$call:signal=KILL:when=1" "$writer" "$target" A k 2 >"$dir/out"
    } 2>"$dir/err" # the shell reports each kill
    grep -q 'killed by SIGKILL' "$dir/trace" || complain "killed at $call: it was not"
    text=$(cat "$target")
    [ "$text" = "$old" ] || [ "$text" = "$new" ] || complain "killed at $call: the file holds '$text'"
    [ "$("$writer" "$target" A k 3)" = '1 0 0' ] || complain "killed at $call: the next write failed"
    [ ! -e "$lock" ] || complain "killed at $call: the next write left a lock file"
done

# ---- the calls of one write, as the system saw them ----

begin
strace -f -o "$dir/trace" -P "$target" -P "$lock" -P "$dir" "$writer" "$target" A k 2 >"$dir/out"
runs=$((runs + 1))
sed -E 's/^[0-9]+ +//; s/\(.*//; s/^(lstat|newfstatat|fstatat|statx|fstat|lstat64|fstatat64|fstat64)$/look/' "$dir/trace" |
    grep -vE '^[+-]' | tr '\n' ' ' >"$dir/calls"
expected='look openat look flock look openat look read read close openat write fsync look rename close fsync close '
[ "$(cat "$dir/calls")" = "$expected" ] || complain "the calls were: $(cat "$dir/calls")"
grep -qE 'O_RDWR\|O_CREAT\|O_EXCL\|.*O_NONBLOCK\|.*O_NOFOLLOW\|O_CLOEXEC, 0600' "$dir/trace" ||
    complain "the lock file was opened otherwise: $(grep CREAT "$dir/trace")"
grep -q 'LOCK_EX|LOCK_NB' "$dir/trace" || complain 'the lock was another'

echo "$runs traced writes"
exit $failed
