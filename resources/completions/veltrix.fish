# SPDX-License-Identifier: GPL-3.0-or-later
# fish completion of veltrix's options.

function __veltrix_has
    set -l words (commandline --tokenize --cut-at-cursor --current-process)
    for option in $argv
        string match --quiet --regex -- "^--$option(=|\$)" $words; and return 0
    end
    return 1
end

complete -c veltrix -f
set -l none 'not __veltrix_has measure export overview help version'
complete -c veltrix -n $none -l measure -d 'Measure what has no measurement today, without a window'
# Also after --export itself, whose value is still to come.
complete -c veltrix -n "$none; or test (commandline -opc)[-1] = --export" -l export -x -a 'csv json' -d 'Write the keywords, without a window'
complete -c veltrix -n $none -l overview -d 'Open the window on the overview of all apps'
complete -c veltrix -n $none -s h -l help -d 'Print the options'
complete -c veltrix -n $none -l version -d 'Print the version'
complete -c veltrix -n '__veltrix_has measure export' -l app -x -d 'Only keywords of this app'
complete -c veltrix -n '__veltrix_has measure export' -l storefront -x -d 'Only keywords of this storefront'
complete -c veltrix -n '__veltrix_has measure' -l all -d 'Measure again what was measured today'
complete -c veltrix -n '__veltrix_has measure' -l json -d 'Print JSON objects, one a line'
complete -c veltrix -n '__veltrix_has measure' -l notify -d 'Tell in a notification what changed'
complete -c veltrix -n '__veltrix_has export' -l history -d 'Write all measurements'
complete -c veltrix -n '__veltrix_has export' -l output -r -F -d 'Write to this file'
