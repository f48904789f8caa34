# Completion of odbcadmin for fish: the command itself knows what can stand where, names from the files included.

function __odbcadmin_candidates
    set -l words (commandline -opc)
    set -l current (commandline -ct | string unescape)
    for line in ($words[1] __complete -- $words[2..-1] "$current" 2>/dev/null)
        switch $line
            case :FILE
                __fish_complete_path (string replace -r '^--[^=]*=' '' -- "$current")
            case :DIR
                __fish_complete_directories (string replace -r '^--[^=]*=' '' -- "$current")
            case :USER
                set -l option (string match -r '^--[^=]*=' -- "$current")
                for user in (__fish_complete_users)
                    echo -- "$option$user"
                end
            case '*'
                echo -- $line
        end
    end
end

complete -c odbcadmin -f -a '(__odbcadmin_candidates)'
