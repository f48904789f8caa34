# Installs the build that a test was given and moves the result, which must not mind: sets root, work, prefix. The
# folder of the test is gone when it ends.
set -eu
cmake=$1
build=$2
shift 2
root=$(cd "$(dirname "$0")/../.." && pwd)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
"$cmake" --install "$build" --prefix "$work/first" >"$work/log" || {
    cat "$work/log"
    exit 1
}
prefix=$work/moved
mv "$work/first" "$prefix"
unset ODBCINI ODBCINSTINI LD_LIBRARY_PATH

# Reports what is wrong; the test goes on, and ends with $failed.
failed=0
fail() {
    echo "$1"
    failed=1
}
