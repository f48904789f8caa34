#!/bin/bash
# Compiles and links the example call that opens each installed header, with every warning an error.
# Usage: header_examples_test.sh CMAKE BUILD
. "$(dirname "$0")/install.sh"

# What the examples use and do not declare.
cat >"$work/before.h" <<'END'
#include <stdio.h>
HWND dialog;
void paint(void* context, HWND shown);
int readKeys(void* context, HWND shown);
void paint(void* context, HWND shown) { (void)context; (void)shown; }
int readKeys(void* context, HWND shown) { (void)context; return shown != 0; }
END

for header in "$prefix"/include/jxodbc/*.h; do
    name=$(basename "$header" .h)
    # The first lines that are indented by five blanks.
    awk '/^ \*     / { print substr($0, 8); found = 1; next } found || /\*\// { exit }' "$header" >"$work/example"
    count=$(wc -l <"$work/example")
    if [ "$count" -lt 2 ] || [ "$count" -gt 8 ]; then
        echo "$name.h opens with an example of $count lines; it should have 2 to 8"
        failed=1
    fi
    case $name in
    jxdataresource | jxerrors | jxprofile | odbcins | jxwindow) language=c++ compiler=(g++ -std=c++11) ;;
    *) language=c compiler=(gcc -std=c99) ;;
    esac
    {
        # Definitions and directives stand by themselves, calls in a function.
        grep -E '^#|^JX_E' "$work/example" || true
        for other in "$prefix"/include/jxodbc/*.h; do
            [ $name = jxtypes ] || echo "#include <$(basename "$other")>"
        done
        [ $name = jxtypes ] || cat "$work/before.h"
        echo 'void example(void);'
        echo 'void example(void) {'
        grep -vE '^#|^JX_E' "$work/example" || true
        echo '}'
        echo 'int main(void) { return 0; }'
    } >"$work/$name.$language"
    [ $name != jxtypes ] || sed -i '1i typedef int BOOL; typedef unsigned short WORD; typedef unsigned int DWORD, HWND;\
typedef char* LPSTR; typedef const char* LPCSTR;' "$work/$name.$language"
    [ $name != jxexport ] || sed -i '1i #include <jxexport.h>' "$work/$name.$language"
    "${compiler[@]}" -x $language -pedantic -Wall -Wextra -Werror -Wno-unused -I"$prefix/include/jxodbc" -o "$work/$name" \
        "$work/$name.$language" -x none -L"$prefix/lib" -lodbcinst -ljxutl08 || {
        echo "The example of $name.h does not compile"
        failed=1
    }
done
exit ${failed:-0}
