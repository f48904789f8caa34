# Completion of odbcadmin for bash: the command itself knows what can stand where, names from the files included.

_odbcadmin() {
    local cur=$2 line kind="" words=() candidates=()
    local -i i
    # Bash parts words at "=" too; what stands left of the cursor is taken as it was typed, quotes removed.
    for ((i = 1; i < COMP_CWORD; i++)); do
        words+=("$(printf '%s' "${COMP_WORDS[i]}" | sed -e 's/^["'\'']//; s/["'\'']$//; s/\\\(.\)/\1/g')")
    done
    local beginning=${cur#[\"\']}
    beginning=${beginning//\\/}
    while IFS= read -r line; do
        case $line in
            :FILE) kind=file ;;
            :DIR) kind=directory ;;
            *) candidates+=("${line%%$'\t'*}") ;;
        esac
    done < <("${COMP_WORDS[0]}" __complete -- "${words[@]}" "$beginning" 2>/dev/null)
    COMPREPLY=()
    case $kind in
        file) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -f -- "$beginning") ;;
        directory) compopt -o filenames 2>/dev/null; mapfile -t COMPREPLY < <(compgen -d -- "$beginning") ;;
    esac
    # Names may hold blanks and more: quoted for the shell, unless the user has opened a quote.
    for line in "${candidates[@]}"; do
        case $cur in
            [\"\']*) COMPREPLY+=("$line") ;;
            *) COMPREPLY+=("$(printf '%q' "$line")") ;;
        esac
    done
}
complete -F _odbcadmin odbcadmin
