# Completion for the project's programs: subcommands and options as --help lists them, names of registry entries.
# shellcheck shell=bash

# Prints the words that PROGRAM [SUBCOMMAND] --help offers: long options, and the lines below "Subcommands:".
_cdr_offers() {
    "$@" --help 2>/dev/null | awk '
        /^Subcommands:/ { commands = 1; next }
        /^[^ ]|^$/ { commands = 0 }
        commands && /^  [a-z]/ { print $1 }
        match($0, /--[a-z][a-z-]*/) && /^ *(-[a-zA-Z],)?--[a-z]/ { print substr($0, RSTART, RLENGTH) }' | sort -u
}

_cdr_complete() {
    local program=$1 current=$2 previous=$3 subcommand='' word
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        [[ $word == -* ]] || { subcommand=$word && break; }
    done
    case ${program##*/}:$subcommand:$previous in
    *:--role) COMPREPLY=($(compgen -W 'read write' -- "$current")) && return ;;
    *:--log-level) COMPREPLY=($(compgen -W 'debug info warning error fatal' -- "$current")) && return ;;
    *:--tls-client-certificates) COMPREPLY=($(compgen -W 'none optional required' -- "$current")) && return ;;
    osqueue:[cdls]*)
        [[ $current == -* ]] || { COMPREPLY=($(compgen -W "$(osqueue list 2>/dev/null | cut -d' ' -f1)" -- "$current")) && return; } ;;
    zporeg:get:* | zporeg:set:* | zporeg:delete:* | zporeg:list:*)
        # The entries that begin with the words before this one, and their next words.
        [[ $current == -* ]] || { COMPREPLY=($(compgen -W "$(zporeg list 2>/dev/null |
            awk -v given="${COMP_WORDS[*]:2:COMP_CWORD-2}" '
                BEGIN { n = split(given, want) }
                { for (i = 1; i <= n; i++) if ($i != want[i]) next; if (n < 3 && $(n + 1) !~ /"/) print $(n + 1) }' | sort -u)" -- "$current")) && return; } ;;
    esac
    COMPREPLY=()
    if [[ $current == -* || -z $subcommand ]]; then
        COMPREPLY=($(compgen -W "$(_cdr_offers "$program" ${subcommand:+"$subcommand"})" -- "$current"))
    fi
    [[ ${COMPREPLY[*]} ]] || mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

complete -o filenames -F _cdr_complete zporeg osqueue cimserverd cimserver-passwd cimserver-cert CDRTransfer cdrsim
