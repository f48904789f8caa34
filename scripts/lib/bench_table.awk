# Turns lines of "benchmark counter value" into a table of ratios. Exit code 1 when a benchmark failed, and with
# check=1 also when a bound is missed.

BEGIN {
    title["readUnchanged"] = "read of a key, unchanged file"
    title["readAfterChange"] = "first read of a changed file"
    title["listUnchanged"] = "list of names, unchanged file"
    title["readEveryKeyOnce"] = "every key once, new thread, each"
    title["memoryOfFile"] = "memory of a parsed file"
    title["lookUpOfTheUsers"] = "`libodbcinst.so.2`: key of the user's file"
    title["lookUpOfTheSystems"] = "key of the system's file"
    title["lookUpOfNeither"] = "key of neither"
    title["lookUpsOfAConnection"] = "50 keys of a connection"
    yardstickOf["lookUpOfTheUsers"] = yardstickOf["lookUpOfTheSystems"] = yardstickOf["lookUpOfNeither"] = "S"
    yardstickOf["lookUpsOfAConnection"] = "stat"
    title["writeKey"] = "durable write of a key"
    title["readScript"] = "reading a script, drivers"
    title["installScript"] = "installing a script, drivers"
    title["commandGet"] = "`odbcadmin dsn get`"
    title["commandList"] = "`odbcadmin dsn list`"
    title["commandSet"] = "`odbcadmin dsn set`"
    title["commandLint"] = "`odbcadmin lint`"
    title["commandDoctorName"] = "`odbcadmin doctor NAME`"
    title["commandLintLines"] = "`odbcadmin lint`, 200 000 lines"
    title["commandDoctorLines"] = "`odbcadmin doctor`, 200 000 lines"
    title["commandApply"] = "`odbcadmin apply`"
    title["commandInstallPreview"] = "`odbcadmin install --dry-run`"
    yardstickOf["commandGet"] = yardstickOf["commandList"] = yardstickOf["commandSet"] = "git"
    yardstickOf["commandLint"] = yardstickOf["commandDoctorName"] = "git"
    yardstickOf["commandLintLines"] = yardstickOf["commandDoctorLines"] = "limit"
    yardstickOf["commandApply"] = yardstickOf["commandInstallPreview"] = "limit"
    yardstickOf["readUnchanged"] = yardstickOf["listUnchanged"] = yardstickOf["readEveryKeyOnce"] = "S"
    yardstickOf["readAfterChange"] = "P"
    yardstickOf["writeKey"] = yardstickOf["installScript"] = "W"
    yardstickOf["readScript"] = "fifty"
    kinds = split("readUnchanged readAfterChange listUnchanged readEveryKeyOnce memoryOfFile lookUpOfTheUsers lookUpOfTheSystems lookUpOfNeither lookUpsOfAConnection writeKey readScript installScript commandGet commandList commandSet commandLint commandDoctorName commandLintLines commandDoctorLines commandApply commandInstallPreview", kind, " ")
    for (i = 1; i <= kinds; i++) placeOf[kind[i]] = i
}

$2 == "error" { print $0 > "/dev/stderr"; failed = 1; next }

!($1 in seen) { seen[$1] = 1; order[++rows] = $1 }
{ value[$1, $2] = $3 }

END {
    if (rows == 0) { print "Nothing was measured" > "/dev/stderr"; exit 1 }
    print "| What | Data sources or drivers | Store | Yardstick | Ratio | At most | Holds | GLib | SimpleIni |"
    print "|---|---:|---:|---:|---:|---:|---|---:|---:|"
    for (row = 2; row <= rows; row++)
        for (i = row; i > 1 && rank(order[i]) < rank(order[i - 1]); i--) { name = order[i]; order[i] = order[i - 1]; order[i - 1] = name }
    for (row = 1; row <= rows; row++) printRow(order[row])
    printf "\n%d of %d bounds hold.\n", held, bounds
    exit failed || (check && held < bounds)
}

# Benchmarks are measured in any order; rows follow their kind, then their size.
function rank(name,   part) { split(name, part, "/"); return placeOf[part[1]] * 1e9 + part[2] }

function printRow(name,   part, what, bound, ratio, holds, store, yardstick) {
    split(name, part, "/")
    what = part[1]
    ratio = value[name, "ratio"] + 0
    bound = value[name, "bound"] + 0
    if (bound > 0) {
        bounds++
        holds = ratio <= bound ? "yes" : "NO"
        held += ratio <= bound
    }
    if (what == "memoryOfFile") {
        store = bytes(value[name, "changed_bytes"])
        yardstick = "file " bytes(value[name, "file_bytes"])
    } else {
        store = duration(value[name, "store_ns"])
        yardstick = yardstickOf[what] " " duration(value[name, yardstickOf[what] "_ns"])
    }
    printf "| %s | %s | %s | %s | %.2f | %s | %s | %s | %s |\n", title[what], grouped(part[2]), store, yardstick, ratio,
        (bound > 0 ? bound : ""), holds, peer(name, "glib_ns"), peer(name, "simpleini_ns")
}

function peer(name, counter) { return (name, counter) in value ? duration(value[name, counter]) : "" }

function grouped(number) {
    return number < 10000 ? number : substr(number, 1, length(number) - 3) " " substr(number, length(number) - 2)
}

function bytes(count) { return sprintf("%.2f MB", count / 1e6) }

function duration(ns) {
    ns += 0
    if (ns < 1000) return sprintf("%.0f ns", ns)
    if (ns < 1e5) return sprintf("%.2f us", ns / 1e3)
    if (ns < 1e6) return sprintf("%.0f us", ns / 1e3)
    return sprintf("%.2f ms", ns / 1e6)
}
