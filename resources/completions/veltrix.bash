# SPDX-License-Identifier: GPL-3.0-or-later
# bash completion of veltrix's options.

_veltrix()
{
    local word=${COMP_WORDS[COMP_CWORD]}
    local before=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    # "--export=csv" comes as three words.
    if [[ $word == '=' ]]; then
        word=
    elif [[ $before == '=' ]]; then
        before=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    case $before in
    --export)
        mapfile -t COMPREPLY < <(compgen -W 'csv json' -- "$word")
        return
        ;;
    --output)
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$word")
        return
        ;;
    --app | --storefront)
        return
        ;;
    esac

    # Once there is a command, only what goes with it.
    local options='--measure --export --overview --help --version' given
    for given in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $given in
        --measure) options='--app --storefront --all --json --notify' ;;
        --export) options='--app --storefront --history --output' ;;
        --overview | --help | --version) options='' ;;
        esac
    done
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$word")
}

complete -F _veltrix veltrix
