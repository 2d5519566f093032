# shellcheck shell=bash
# Completion of consolidator(1) for bash. Files of the kind that an option takes are offered; where
# there is none that fits what was typed, all files are, since no name is wrong.

# Offers the files that match $1 and do not match $2, or else all files; folders in any case.
_consolidator_files() {
    local wanted=$1 unwanted=${2:-} file kind=0
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$current")
    while IFS= read -r file; do
        # shellcheck disable=SC2053  # patterns
        if [[ ! -d $file && $file == $wanted && $file != $unwanted ]]; then
            COMPREPLY+=("$file")
            kind=1
        fi
    done < <(compgen -f -- "$current")
    [[ $kind -eq 1 ]] || mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

# Offers the options that may still be given.
_consolidator_options() {
    local options word
    options=" -a --add -c --create -u --dump-dwarf -j --dump-json -d --DWARF --help -h --hierarchy"
    options+=" -k --kernel -s --hls -x --aux -l --ll -r --ram -f --consolidated_file -p --project"
    options+=" -v --version "
    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case $word in
            -a | --add | -c | --create) options=${options/ -a --add -c --create / } ;;
            -u | --dump-dwarf) options=${options/ -u --dump-dwarf / } ;;
            -j | --dump-json) options=${options/ -j --dump-json / } ;;
            -d | --DWARF) options=${options/ -d --DWARF / } ;;
            --help) options=${options/ --help / } ;;
            -f | --consolidated_file) options=${options/ -f --consolidated_file / } ;;
            -p | --project) options=${options/ -p --project / } ;;
            -v | --version) options=${options/ -v --version / } ;;
        esac
    done
    mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
}

_consolidator() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    # An equal sign is a word of its own.
    if [[ $current == "=" ]]; then
        current=
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    case $previous in
        -f | --consolidated_file) _consolidator_files '*.consolidated' ;;
        -h | --hierarchy) _consolidator_files '*.hierarchy' ;;
        -d | --DWARF | -u | --dump-dwarf) _consolidator_files '*.dwarf' ;;
        -j | --dump-json) _consolidator_files '*.json' ;;
        -k | --kernel) _consolidator_files '*.xml' '*_auxiliary.xml' ;;
        -s | --hls) _consolidator_files '*.dbg' ;;
        -x | --aux) _consolidator_files '*_auxiliary.xml' ;;
        -l | --ll) _consolidator_files '*.ll' ;;
        -r | --ram) _consolidator_files '*.ram' ;;
        -p | --project) ;;
        *) _consolidator_options ;;
    esac
}

complete -F _consolidator consolidator
