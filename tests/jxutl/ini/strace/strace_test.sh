#!/bin/bash
# Makes real system calls fail, to check that the faults of the other tests are realistic.
# Usage: strace_test.sh WRITE-ONCE DOCUMENT
set -u
writer=$1
document=$2
dir=$(mktemp -d)
trap 'rm -rf "$dir"' EXIT
export ASAN_OPTIONS=detect_leaks=0 # it cannot look for leaks in a traced process
target=$dir/x.ini
lock=$dir/.x.ini.jxlock
old=$'[A]\nk=1'
new=$'[A]\nk=2'
failed=0
runs=0

# The numbers of enum JxIniStep and of errno.
LOOK=4 OPEN=5 READ=6 LOCK=7 WRITE=9 MODE=10 OWNER=11 FLUSH=12 RENAME=13 DIRECTORY=14 REMOVE=15
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
    rm -f "$dir"/x.ini* "$dir"/.x.ini*
    printf '%s\n' "$old" >"$target"
    chmod 600 "$target"
}

left() { # the files of a change that are there
    find "$dir" -name '.x.ini*' -printf '%f '
}

# run WHAT PATH INJECTION VALUE RESULT TEXT: writes k=VALUE with INJECTION done to the calls on PATH, or to all for "all".
run() {
    local what=$1 path=$2 injection=$3 value=$4 result=$5 text=$6 printed
    local -a only=()
    [ "$path" = all ] || only=(-P "$path" -P "${path##*/}")
    runs=$((runs + 1))
    printed=$(strace -f -o "$dir/trace" "${only[@]}" -e inject="$injection" "$writer" "$target" A k "$value" 2>"$dir/why")
    [ "$printed" = "$result" ] || complain "$what: printed '$printed', not '$result'"
    [ "$(cat "$target")" = "$text" ] || complain "$what: the file holds '$(cat "$target")'"
    grep -q INJECTED "$dir/trace" || complain "$what: nothing was injected"
    [ -z "$(left)" ] || [ "${what#remove}" != "$what" ] || complain "$what: left $(left)"
    "$writer" "$target" A k 3 >"$dir/out"
    [ "$(cat "$dir/out")" = '1 0 0' ] || complain "$what: the next write failed"
    [ -z "$(left)" ] || complain "$what: the next write left $(left)"
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

# ---- every step fails ----

fstatat='?newfstatat,?fstatat64,?statx'
fault $LOOK $EIO 'look at the target' "$dir" "$fstatat" 1 EIO
fault $LOCK $EMFILE 'make the lock file' "$lock" openat 1 EMFILE
fault $LOCK $ENOLCK 'lock' "$lock" flock 1 ENOLCK
fault $LOCK $ENOSPC 'write the lock file' all write 1 ENOSPC
fault $OPEN $EMFILE 'open the target' "$target" openat 1 EMFILE
fault $READ $EIO 'read' "$target" read 1 EIO
fault $OPEN $EMFILE 'open the directory' "$dir" openat 3 EMFILE
fault $WRITE $EMFILE 'make the new file' "$dir" openat 4 EMFILE
fault $WRITE $ENOSPC 'write' all write 2 ENOSPC
fault $FLUSH $EIO 'flush' all fsync 1 EIO
fault $RENAME $EBUSY 'put in place' all renameat2 1 EBUSY
prepare=others_may_read fault $MODE $EPERM 'mode' all fchmod 1 EPERM
if [ "$(id -u)" = 0 ]; then
    prepare=belongs_to_another fault $OWNER $EPERM 'owner' all '?fchown,?fchown32' 1 EPERM
else
    echo 'Left out: only root can make a file of another user'
fi

begin
run 'remove the lock of a change that changes nothing' all unlinkat:error=EIO 1 "0 $REMOVE $EIO" "$old"
begin
run 'remove what came out' all unlinkat:error=EIO:when=1 2 '1 0 0' "$new"
begin
run 'remove the lock' all unlinkat:error=EIO:when=2 2 '1 0 0' "$new"
begin
run 'flush the directory' all fsync:error=EIO:when=2 2 "0 $DIRECTORY $EIO" "$new"
begin
run 'a directory that cannot be flushed' all fsync:error=EINVAL:when=2 2 '1 0 0' "$new"
begin
run 'a directory that cannot be opened' "$dir" openat:error=EACCES:when=3 2 '1 0 0' "$new"
begin
run 'a system without openat2' all openat2:error=ENOSYS 2 '1 0 0' "$new"
begin
run 'a file system that cannot exchange' all renameat2:error=EINVAL:when=1 2 '1 0 0' "$new"
begin
run 'interrupted' all openat2,flock,write,fsync,renameat2,unlinkat:error=EINTR:when=1 2 '1 0 0' "$new"
begin
run 'interrupted on the directory' "$dir" "openat,$fstatat:error=EINTR:when=1..3" 2 '1 0 0' "$new"
begin
others_may_read
run 'interrupted at the mode' all fchmod:error=EINTR:when=1 2 '1 0 0' "$new"

# ---- killed at every step ----

# killed CALL WHEN PATH
killed() {
    local what="killed at $1 $2" text
    local -a only=()
    [ "$3" = all ] || only=(-P "$3" -P "${3##*/}")
    begin
    runs=$((runs + 1))
    {
        strace -f -o "$dir/trace" "${only[@]}" -e inject="$1:signal=KILL:when=$2" "$writer" "$target" A k 2 >"$dir/out"
    } 2>"$dir/err" # the shell reports each kill
    grep -q 'killed by SIGKILL' "$dir/trace" || complain "$what: it was not"
    text=$(cat "$target")
    [ "$text" = "$old" ] || [ "$text" = "$new" ] || complain "$what: the file holds '$text'"
    [ "$("$writer" "$target" A k 3)" = '1 0 0' ] || complain "$what: the next write failed"
    [ -z "$(left)" ] || complain "$what: the next write left $(left)"
}

for when in 1 2 3 4; do
    killed openat $when "$dir"
done
for call in openat2 flock renameat2; do
    killed $call 1 all
done
for call in write fsync unlinkat; do
    killed $call 1 all
    killed $call 2 all
done

# ---- the calls of one write, as the system saw them ----

# The document lists them, one step a line; "look" is any call that asks for a state. Root also looks at the directory's
# owner, which is left out here.
documented=$(sed -n '/^```calls$/,/^```$/p' "$document" | grep -v '^```' | sed 's/^[0-9]* *//' | tr '\n' ' ' | tr -s ' ')
begin
strace -f -y -o "$dir/trace" "$writer" "$target" A k 2 >/dev/null
runs=$((runs + 1))
grep -E "<$dir[/>]|\"$dir/?\"|^[0-9]+ +openat2" "$dir/trace" | grep -vE "(fstatat|fstatat64|statx)\([0-9]+<$dir>, \"\"|fstat(64)?\([0-9]+<$dir>" |
    sed -E 's/^[0-9]+ +//; s/\(.*//; s/^(lstat|newfstatat|fstatat|statx|fstat|lstat64|fstatat64|fstat64)$/look/' |
    tr '\n' ' ' >"$dir/calls"
[ "$(cat "$dir/calls")" = "$documented" ] || complain "the calls were: $(cat "$dir/calls")"$'\n'"documented: $documented"
grep -qE 'RESOLVE_NO_SYMLINKS' "$dir/trace" || complain "the directory was opened otherwise: $(grep openat2 "$dir/trace")"
grep -qE 'O_RDWR\|O_CREAT\|O_EXCL\|.*O_NONBLOCK\|.*O_NOFOLLOW\|O_CLOEXEC, 0600' "$dir/trace" ||
    complain "the lock file was opened otherwise: $(grep CREAT "$dir/trace")"
grep -q 'RENAME_EXCHANGE' "$dir/trace" || complain 'the new file was put in place otherwise'
grep -q 'LOCK_EX|LOCK_NB' "$dir/trace" || complain 'the lock was another'

echo "$runs traced writes"
exit $failed
