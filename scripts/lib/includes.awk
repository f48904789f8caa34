# Checks which folder includes which, against the list in docs/architecture.md that begins with "<!-- includes -->": a line
#     FOLDER, FOLDER -> FOLDER, FOLDER
# lets the folders on the left include those on the right; a folder may always include itself, installed headers and what the
# line "* -> ..." says. Also finds includes of headers that are not there, and circles of headers.
# Standard input: the headers and sources, one path a line. Exit code 1 with a line for each finding.

BEGIN {
    while ((getline line < "docs/architecture.md") > 0) {
        if (line ~ /<!-- includes -->/) { inList = 1; continue }
        if (line ~ /<!-- end -->/) inList = 0
        if (inList && split(line, side, "->") == 2) allow(side[1], side[2])
    }
    if (!rules) { print "docs/architecture.md has no list of includes"; exit 1 }
}
{ files[++count] = $0; there[$0] = 1 }
END {
    for (i = 1; i <= count; i++) checkFile(files[i])
    for (i = 1; i <= count; i++) if (files[i] ~ /\.h$/) findCircle(files[i])
    exit bad > 0 || !rules
}

function allow(from, to,   f, t, i, j, m, n) {
    gsub(/[ \t]/, "", from); gsub(/[ \t]/, "", to)
    n = split(from, f, ","); m = split(to, t, ",")
    for (i = 1; i <= n; i++) {
        known[f[i]] = 1
        for (j = 1; j <= m; j++) { may[f[i], t[j]] = 1; if (t[j] != "nothing") known[t[j]] = 1 }
    }
    rules++
}
# The folder of a file as the list names it: below src, or "installed".
function folderOf(path) {
    if (path ~ /^include\//) return "installed"
    sub(/^src\//, "", path); sub(/\/?[^\/]*$/, "", path)
    return path
}
function complain(file, number, text) { print file ":" number ": " text; bad++ }
function checkFile(file,   line, number, quoted, target, header, from, to) {
    from = folderOf(file)
    if (!(from in known) && from != "installed") complain(file, 1, "the list in docs/architecture.md does not name " from)
    while ((getline line < file) > 0) {
        number++
        if (!match(line, /^ *# *include *["<][^">]*[">]/)) continue
        sub(/^ *# *include */, "", line)
        quoted = line ~ /^"/
        target = line; sub(/^["<]/, "", target); sub(/[">].*/, "", target)
        header = headerOf(file, target, quoted)
        if (header == "") {
            if (quoted) complain(file, number, "no header of this tree: " target)
            continue
        }
        if (header ~ /\.h$/) edges[file] = edges[file] " " header
        to = folderOf(header)
        if (from == to || to == "installed" || (from, to) in may || ("*", to) in may && from != "installed") continue
        complain(file, number, from " may not include " header)
    }
    close(file)
}
# The header of this tree that an include means; "" for none.
function headerOf(file, target, quoted,   beside, generation) {
    if (quoted) {
        if ("src/" target in there) return "src/" target
        beside = file; sub(/[^\/]*$/, "", beside)
        if (beside target in there) return beside target
    } else if (target !~ /\// || target ~ /^jxodbc3?\//) {
        for (generation = 1; generation <= 2; generation++) {
            beside = "include/" (generation == 1 ? "jxodbc/" : "jxodbc3/") target
            if (beside in there) return beside
        }
    }
    if ("src/" target in there) return "src/" target
    return ""
}
function findCircle(file,   next_, n, i) {
    if (state[file] == 2) return
    if (state[file] == 1) { complain(file, 1, "includes itself by way of other headers"); return }
    state[file] = 1
    n = split(edges[file], next_, " ")
    for (i = 1; i <= n; i++) findCircle(next_[i])
    state[file] = 2
}
