# Completion of tavolins for fish.

function __tavolins_codes
    tavolins check --list-codes 2>/dev/null | string replace -r ' .*' ''
end

complete -c tavolins -n __fish_use_subcommand -f -a check -d 'Tell what is wrong with themes'
complete -c tavolins -n __fish_use_subcommand -f -a explain -d 'Explain a code of tavolins check'
complete -c tavolins -n __fish_use_subcommand -f -a show -d 'Show values and their origins'
complete -c tavolins -n __fish_use_subcommand -f -a diff -d 'Show what differs between two themes'
complete -c tavolins -n __fish_use_subcommand -f -a new -d 'Write a theme to begin with'
complete -c tavolins -n __fish_use_subcommand -f -a schema -d 'Print the JSON Schema of theme files'
complete -c tavolins -n __fish_use_subcommand -f -a shot -d 'Write pictures of themes'
complete -c tavolins -n __fish_use_subcommand -l version -d 'Show the version'
complete -c tavolins -s h -l help -d 'Show help'

set -l check '__fish_seen_subcommand_from check'
complete -c tavolins -n $check -l format -x -a 'text json sarif' -d 'Form of the report'
complete -c tavolins -n $check -l contrast -x -a 'AA AAA off' -d 'Contrast that texts need'
complete -c tavolins -n $check -l disable -x -a '(__tavolins_codes)' -d 'Leave out a code'
complete -c tavolins -n $check -l only -x -a '(__tavolins_codes)' -d 'Tell a code only'
complete -c tavolins -n $check -l werror -d 'Tell warnings as errors'
complete -c tavolins -n $check -l watch -d 'Check again at each change'
complete -c tavolins -n $check -l import -x -a '(__fish_complete_directories)' -d 'Where QML modules are'
complete -c tavolins -n $check -l list-codes -d 'Print all codes'
complete -c tavolins -n $check -l color -x -a 'auto always never' -d 'Print in colors'

complete -c tavolins -n '__fish_seen_subcommand_from explain' -f -a '(__tavolins_codes)'

set -l values '__fish_seen_subcommand_from show diff'
complete -c tavolins -n $values -l class -x -d 'Class names of the item'
complete -c tavolins -n $values -l folder -x -a '(__fish_complete_directories)' -d 'Where titles are looked for'
complete -c tavolins -n $values -l color -x -a 'auto always never' -d 'Print in colors'
complete -c tavolins -n '__fish_seen_subcommand_from show' -l key -x -d 'Show one value or group only'
complete -c tavolins -n '__fish_seen_subcommand_from show' -l format -x -a 'text json css qml' -d 'Form of the values'
complete -c tavolins -n '__fish_seen_subcommand_from diff' -l format -x -a 'text json' -d 'Form of the differences'

set -l new '__fish_seen_subcommand_from new'
complete -c tavolins -n $new -l background -x -d 'Color of the page'
complete -c tavolins -n $new -l accent -x -d 'Color of what stands out'
complete -c tavolins -n $new -s o -l output -r -d 'Where to write'

complete -c tavolins -n '__fish_seen_subcommand_from schema' -f -l format -x -a 'json markdown' -d 'Form of the keys'

set -l shot '__fish_seen_subcommand_from shot'
complete -c tavolins -n $shot -s o -l output -x -a '(__fish_complete_directories)' -d 'Where to write'
complete -c tavolins -n $shot -l size -x -d 'Width and height'
complete -c tavolins -n $shot -l theme -x -d 'One theme only'
