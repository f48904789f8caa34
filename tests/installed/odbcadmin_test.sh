#!/bin/bash
# The installed command finds the libraries of its own installation, and its manual and completions lie where they should.
# Usage: odbcadmin_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"
cd "$prefix"

for file in share/man/man1/odbcadmin.1 share/bash-completion/completions/odbcadmin share/zsh/site-functions/_odbcadmin \
    share/fish/vendor_completions.d/odbcadmin.fish share/jxodbc/drivers/postgresql.ini share/doc/jxodbc/docs/odbcadmin.md; do
    [ -e "$file" ] || fail "$file was not installed"
done
readelf -dW bin/odbcadmin | grep -q 'RUNPATH.*\[$ORIGIN/../lib\]' || fail "bin/odbcadmin does not look in ../lib"
# A driver's references would reach an installer library that the programs or the helper are linked with.
for program in bin/odbcadmin bin/xodbcadmin libexec/jxodbc/odbcadmin-trial; do
    [ -e "$program" ] || [ $program = bin/xodbcadmin ] || fail "$program was not installed"
    [ ! -e "$program" ] || ! readelf -dW "$program" | grep -q 'NEEDED.*odbcinst' || fail "$program is linked with libodbcinst"
done
[ "$(readelf -dW libexec/jxodbc/odbcadmin-trial | grep -c NEEDED)" = 1 ] || fail "the helper needs more than the C library"
! readelf -dW libexec/jxodbc/odbcadmin-trial | grep -qE 'RUNPATH|RPATH' || fail "the helper has search paths of its own"

export HOME=$work/home ODBCSYSINI=$work/system
mkdir "$HOME" "$ODBCSYSINI"
bin/odbcadmin driver add Plain --lib /opt/libplain.so >"$work/added" 2>"$work/warning"
[ "$(bin/odbcadmin config get .odbcinst.ini Plain Setup)" = "$(realpath lib/libjxsetup.so)" ] ||
    fail "the general setup library beside the program was not entered"
bin/odbcadmin dsn add Sales --driver Plain Server=db1 || fail "dsn add failed"
[ "$(bin/odbcadmin dsn list)" = "Sales  Plain" ] || fail "dsn list printed something else"
[ "$(bin/odbcadmin dsn get Sales Server)" = db1 ] || fail "dsn get printed something else"
bin/odbcadmin -q driver add Pg --lib /opt/psqlodbcw.so
bin/odbcadmin dsn add Stock --driver Pg PWD=x 2>&1 | grep -q "asks for Password" || fail "nothing is known of PostgreSQL's driver"

# The manual names every command that the help does, and man takes it as it stands.
verbs() { bin/odbcadmin "$@" --help | sed -n '/^Subcommands:/,/^$/s/^  \([a-z]*\) .*/\1/p'; }
for noun in $(verbs); do
    inner=$(verbs "$noun")
    for command in ${inner:-$noun}; do
        [ -z "$inner" ] || command="$noun $command"
        grep -qE "^\\.B $command( |\$)" share/man/man1/odbcadmin.1 || fail "odbcadmin.1 does not tell of \"$command\""
    done
done
for page in odbcadmin xodbcadmin; do
    [ -e "bin/$page" ] || continue
    [ -e "share/man/man1/$page.1" ] || fail "$page.1 was not installed"
    if command -v man >/dev/null && man --warnings -E UTF-8 -l -Tutf8 "share/man/man1/$page.1" 2>&1 >/dev/null | grep .; then
        fail "man complains about $page.1"
    fi
done

# The window's program finds the same libraries and tells of every option in its manual.
if [ -e bin/xodbcadmin ]; then
    ldd bin/xodbcadmin | grep -q "libjxutl08.so => $prefix/" || fail "bin/xodbcadmin found another libjxutl08.so"
    [ "$(bin/xodbcadmin --version)" = "x$(bin/odbcadmin --version)" ] || fail "the two programs differ in their version"
    for option in $(bin/xodbcadmin --help | grep -o '^  --[a-z]*' | tr -d ' -'); do
        grep -q "^\.BI\? *\"\?\\\\-\\\\-$option" share/man/man1/xodbcadmin.1 || fail "xodbcadmin.1 does not tell of --$option"
    done
    for file in applications/xodbcadmin.desktop icons/hicolor/scalable/apps/xodbcadmin.svg; do
        [ -e "share/$file" ] || fail "$file was not installed"
    done
fi
exit $failed
