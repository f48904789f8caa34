# The checks of scripts/check that look at what was built in $build. Each prints its findings and returns 1 when there
# are any.

library_file() { # odbcinst, odbcinst2, jxutl08 or jxsetup
    case $1 in
    odbcinst2) echo "$build/src/jxodbc/libodbcinst.so.2" ;;
    odbcinst) echo "$build/src/libodbcinst.so.1" ;;
    *) echo "$build/src/lib$1.so" ;;
    esac
}

# A new name needs a line in the list and one in the changelog.
check_exports() {
    local library list bad=0
    for library in odbcinst odbcinst2 jxutl08 jxsetup; do
        list=tests/abi/$library.txt
        if readelf -h "$(library_file $library)" | grep -q ELF32; then
            list=tests/abi/$library.i386.txt
        fi
        diff -u --label "$list" --label "exported now" "$list" <(scripts/exports "$(library_file $library)") || bad=1
    done
    return $bad
}

# The calls that change a disk stand in one source file of the utility library; tests put their own in its place.
check_seam() {
    local users
    users=$(find "$build/src/CMakeFiles/jxutl_objects.dir" -name '*.o' -exec nm -A -u {} + |
        grep -E ' (rename|renameat2?|fsync|fdatasync|open(at)?(64)?|unlink(at)?|remove|f?truncate(64)?|creat(64)?|fopen(64)?|mkstemp(64)?|.*basic_filebuf.*|f?ch(mod|own)(at)?|lchown|flock|fcntl(64)?|(sym)?link(at)?|mkdir(at)?|rmdir|read|p(read|write)(64)?|readlink(at)?|mmap(64)?|(__)?[fl]?stat(at|x)?(64)?(_time64)?)$' |
        sed 's|^.*jxutl_objects.dir/||; s|\.o:.*||' | sort -u)
    [ "$users" = jxutl/ini/file_ops.cpp ] && return
    printf 'These files call the disk, and only jxutl/ini/file_ops.cpp may:\n%s\n' "$users"
    return 1
}

# A library does not end the process, start threads or programs, or print.
check_undefined() {
    local library
    for library in odbcinst odbcinst2 jxutl08 jxsetup; do
        nm -D --undefined-only "$(library_file $library)" | awk '{ sub(/@.*/, "", $NF); print $NF }' |
            grep -xE 'abort|exit|_exit|_Exit|quick_exit|__assert_fail|system|popen|pthread_create|printf|vprintf|puts|putchar|stdout|__v?printf_chk|_ZSt4cout|_ZNSt6thread15_M_start_threadE.*' |
            sed "s/^/$library uses /"
    done | nothing
}

needed_by() { readelf -dW "$1" | sed -n 's/.*(NEEDED).*\[\(.*\)\]/\1/p'; }

# Only the C library, the compiler's runtime and this product's own libraries; a name programs find it by; nothing that
# binds or writes where it should not.
check_needed() {
    local library file runtime='libc\.so\.6|libm\.so\.6|libstdc\+\+\.so\.6|libgcc_s\.so\.1|ld-linux.*'
    for library in odbcinst odbcinst2 jxutl08 jxsetup; do
        file=$(library_file $library)
        case $library in
        jxutl08) needed_by "$file" | grep -vxE "$runtime" ;;
        *) needed_by "$file" | grep -vxE "$runtime|libjxutl08\.so" ;;
        esac | sed "s/^/$library must not need /"
        readelf -dW "$file" | grep -E 'TEXTREL|SYMBOLIC' | sed "s/^/$library: /"
        [ $library = jxsetup ] || readelf -dW "$file" | grep -q "(SONAME).*\[$(basename "$file")\]" ||
            echo "$file does not bear its own name"
    done | nothing
}

# Every test source is compiled into a test program.
check_tests() {
    # A build that was told to leave the command out has none of its tests; one that lacks its packages should have.
    local left=none compiled
    # Sources that are compiled several at a time stand in the file that includes them.
    compiled=$(grep -h '"file":' "$build/compile_commands.json"
        find "$build/tests" -path '*/Unity/*.cxx' -exec grep -h '^#include' {} +)
    grep -q '^JX_BUILD_ADMIN:[A-Z]*=OFF' "$build/CMakeCache.txt" && left='tests/odbcadmin/*'
    find tests -name '*_test.cpp' ! -path "$left" | sort | while read -r source; do
        grep -qF "\"$root/$source\"" <<<"$compiled" || echo "No program holds $source"
    done | nothing
}

# clang-tidy on the sources of src as BUILD compiles them; scripts/lengths keeps the size of functions in tests.
check_tidy() {
    local sources
    sources=$(sed -n 's/^ *"file": "\(.*\)",\{0,1\}$/\1/p' "$build/compile_commands.json" | grep -F "$root/src/")
    [ -n "$sources" ] || {
        echo "$build compiles nothing"
        return 1
    }
    # Each run counts its warnings on stderr, and parallel runs tear each other's lines: the exit code decides.
    local log
    log=$(xargs -r -d '\n' -P "$(nproc)" -n 8 clang-tidy --quiet -p "$build" <<<"$sources" 2>&1) && return
    grep -vE '^[0-9]* ?warnings? generated\.$|^[0-9]+$' <<<"$log"
    return 1
}
