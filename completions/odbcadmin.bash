# Completion of odbcadmin for bash: the command itself knows what can stand where, names from the files included.

# Parts the line left of the cursor into words as bash would, without their quotes: they are in words, the last one is what
# is completed. quote is the quote that it leaves open; kept is what stands before the part that readline replaces, which
# begins behind an open quote, or else behind the last of the characters at which readline parts words.
_odbcadmin_words() {
    local line=${COMP_LINE:0:COMP_POINT} letter word="" breaks=${COMP_WORDBREAKS//[\'\"]/}
    local -i at begun=0
    words=() quote="" kept=""
    for ((at = 0; at < ${#line}; at++)); do
        letter=${line:at:1}
        if [[ $quote = \' && $letter != \' ]]; then
            word+=$letter
        elif [[ $letter = \\ && ( -z $quote || ${line:at+1:1} = [\"\\\$\`] ) ]]; then
            at+=1 begun=1
            word+=${line:at:1}
        elif [[ $letter = "$quote" ]]; then
            quote=""
        elif [[ -z $quote && $letter = [\'\"] ]]; then
            quote=$letter kept=$word begun=1
        elif [[ -z $quote && $letter = [\;\|\&\(] ]]; then
            words=() word="" kept="" begun=0
        elif [[ -z $quote && $letter = [[:space:]] ]]; then
            ((begun)) && words+=("$word")
            word="" kept="" begun=0
        else
            word+=$letter begun=1
            [[ -n $quote || $breaks != *"$letter"* ]] || kept=$word
        fi
    done
    words+=("$word")
}

# The text as it must stand on the line: within the quote that is open, or behind backslashes.
_odbcadmin_quoted() {
    local text=$1 special=' 	"'\''\$`!#&()*;<>?[]^{|}~' letter
    local -i at
    case $quote in
        \') printf '%s' "${text//\'/\'\\\'\'}" ;;
        \") special='"\$`' ;;&
        *)
            for ((at = 0; at < ${#text}; at++)); do
                letter=${text:at:1}
                [[ $special != *"$letter"* ]] || letter="\\$letter"
                printf '%s' "$letter"
            done
            ;;
    esac
}

_odbcadmin() {
    local words quote kept line kind="" option="" candidates=()
    _odbcadmin_words
    local current=${words[-1]}
    while IFS= read -r line; do
        case $line in
            :FILE) kind=-f ;;
            :DIR) kind=-d ;;
            :USER) kind=-u ;;
            *) candidates+=("${line%%$'\t'*}") ;;
        esac
    done < <("$1" __complete -- "${words[@]:1}" 2>/dev/null)
    COMPREPLY=()
    if [[ -n $kind ]]; then
        [[ $current != --*=* ]] || option=${current%%=*}=
        [[ $kind = -u ]] || compopt -o filenames 2>/dev/null
        while IFS= read -r line; do
            line=$option$line
            COMPREPLY+=("${line#"$kept"}")
        done < <(compgen "$kind" -- "${current#"$option"}")
        return
    fi
    for line in "${candidates[@]}"; do
        [[ $line != *= ]] || compopt -o nospace 2>/dev/null
        line=${line#"$kept"}
        COMPREPLY+=("$(_odbcadmin_quoted "$line")")
    done
}
complete -F _odbcadmin odbcadmin
