# Turns what tmux captured with its colours into a picture (SVG).

cell_width=9
cell_height=18

# The quotes keep "&" from standing for what was found.
escaped() {
    local text=${1//&/'&amp;'}
    text=${text//</'&lt;'}
    text=${text//>/'&gt;'}
    printf '%s' "$text"
}

# Sets what follows in the picture: foreground, background, weight, decoration, opacity.
plain_look() { foreground=\#d8d8d8 background= weight=normal decoration=none opacity=1 reversed=0; }

apply_code() {
    case ${1:-0} in
    0) plain_look ;;
    1) weight=bold ;;
    2) opacity=0.5 ;;
    4) decoration=underline ;;
    7) reversed=1 ;;
    30) foreground=\#000000 ;;
    31) foreground=\#ff5555 ;;
    37) foreground=\#ffffff ;;
    39) foreground=\#d8d8d8 ;;
    44) background=\#1f3f9f ;;
    46) background=\#20a0a0 ;;
    49) background= ;;
    esac
}

put_run() { # text column line
    [ -n "$1" ] || return 0
    local x=$(($2 * cell_width)) y=$(($3 * cell_height)) width=$((${#1} * cell_width)) front=$foreground back=$background
    [ $reversed = 0 ] || front=\#1e1e1e back=\#d8d8d8
    [ -z "$back" ] || printf '<rect x="%d" y="%d" width="%d" height="%d" fill="%s"/>\n' $x $y $width $cell_height "$back"
    [ -n "${1// /}" ] || return 0
    # Not every viewer keeps blanks at the ends of a text.
    local blanks=${1%%[! ]*} text
    text=${1#"$blanks"}
    text=${text%"${text##*[! ]}"}
    printf '<text x="%d" y="%d" textLength="%d" fill="%s" font-weight="%s" text-decoration="%s" opacity="%s">%s</text>\n' \
        $((x + ${#blanks} * cell_width)) $((y + 14)) $((${#text} * cell_width)) "$front" $weight $decoration $opacity \
        "$(escaped "$text")"
}

put_line() { # text line
    local rest=$1 run='' column=0 begin=0 codes code
    while [ -n "$rest" ]; do
        if [[ $rest =~ ^$'\033'\[([0-9\;]*)m ]]; then
            put_run "$run" $begin "$2"
            run='' begin=$column codes=${BASH_REMATCH[1]}
            for code in ${codes//;/ }; do apply_code "$code"; done
            [ -n "$codes" ] || plain_look
            rest=${rest#"${BASH_REMATCH[0]}"}
        else
            run+=${rest:0:1}
            rest=${rest:1}
            column=$((column + 1))
        fi
    done
    put_run "$run" $begin "$2"
}

# Standard input: the capture.
terminal_picture() { # columns lines
    local line number=0
    printf '<svg xmlns="http://www.w3.org/2000/svg" width="%d" height="%d" font-family="monospace" font-size="15" xml:space="preserve">\n' \
        $(($1 * cell_width)) $(($2 * cell_height))
    printf '<rect width="100%%" height="100%%" fill="#1e1e1e"/>\n'
    plain_look
    while IFS= read -r line; do
        put_line "$line" $number
        number=$((number + 1))
    done
    printf '</svg>\n'
}
