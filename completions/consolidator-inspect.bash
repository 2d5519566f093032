# shellcheck shell=bash
# Completion of consolidator-inspect(1) for bash. Consolidated files are offered; where there is none
# that fits what was typed, all files are, since no name is wrong.

_consolidator_inspect_files() {
    local file kind=0
    compopt -o filenames 2>/dev/null
    while IFS= read -r file; do
        [[ -d $file || $file == *.consolidated ]] || continue
        COMPREPLY+=("$file")
        [[ -d $file ]] || kind=1
    done < <(compgen -f -- "$current")
    [[ $kind -eq 1 ]] || mapfile -t COMPREPLY < <(compgen -f -- "$current")
}

_consolidator_inspect_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$current")
}

# Offers the options of a command that are not given yet; --kernel and --fail-under may be repeated.
_consolidator_inspect_options() {
    local options=" --help " word
    case $1 in
        show) options+="--kernel " ;;
        json) options+="--pretty " ;;
        extract) options+="--output " ;;
        find) options+="--format " ;;
        verify) options+="--format --notes --all --strict --require --quiet " ;;
        diff) options+="--format --exact --sections --stat " ;;
        coverage) options+="--format --fail-under --baseline " ;;
        explain) options+="--format --strict -- " ;;
        run) options+="--format --allow --keep-if-equal --quiet -- " ;;
        report) options+="--output --source " ;;
        sql) options+="--output --append " ;;
    esac
    for word in "${COMP_WORDS[@]:2:COMP_CWORD-2}"; do
        [[ $word == --kernel || $word == --fail-under ]] || options=${options/ "$word" / }
    done
    _consolidator_inspect_words "$options"
}

# Offers what may stand where no option does: $2 is the number of the operand.
_consolidator_inspect_operand() {
    case $1:$2 in
        extract:2) _consolidator_inspect_words "project dwarf json records" ;;
        show:1 | json:1 | extract:1 | find:1 | diff:[12] | coverage:1 | report:1 | verify:* | sql:*)
            _consolidator_inspect_files ;;
    esac
}

# Completes the tool's own command line, which begins after the given number of words.
_consolidator_inspect_tool() {
    local words=("${COMP_WORDS[@]:$1}") place=$((COMP_CWORD - $1 + 1))
    local COMP_WORDS=(consolidator "${words[@]}") COMP_CWORD=$place
    declare -F _consolidator >/dev/null || _completion_loader consolidator 2>/dev/null
    declare -F _consolidator >/dev/null && _consolidator
}

# The number of the operand that is completed, counted from 1.
_consolidator_inspect_place() {
    local place=1 word before=
    for word in "${COMP_WORDS[@]:2:COMP_CWORD-2}"; do
        case $before:$word in
            *:= | =:* | *:-?*) ;;
            --format:* | --kernel:* | --require:* | --output:* | -o:*) ;;
            --fail-under:* | --baseline:* | --source:*) ;;
            *) place=$((place + 1)) ;;
        esac
        before=$word
    done
    echo "$place"
}

_consolidator_inspect() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local command=${COMP_WORDS[1]} i
    # An equal sign is a word of its own.
    if [[ $current == "=" ]]; then
        current=
    elif [[ $previous == "=" ]]; then
        previous=${COMP_WORDS[COMP_CWORD - 2]}
    fi
    COMPREPLY=()
    if [[ $COMP_CWORD -eq 1 ]]; then
        _consolidator_inspect_words "show json extract find verify diff coverage explain run report \
            sql --help --version"
        return
    fi
    if [[ $command == explain || $command == run ]]; then
        for ((i = 2; i < COMP_CWORD; ++i)); do
            [[ ${COMP_WORDS[i]} == -- ]] || continue
            _consolidator_inspect_tool $((i + 1))
            return
        done
    fi
    case $previous:$current in
        --format:*) _consolidator_inspect_words "text json" ;;
        --require:*) _consolidator_inspect_words "kernels instances dwarf locations project=" ;;
        --fail-under:*) _consolidator_inspect_words "arguments= variables=" ;;
        --baseline:*) _consolidator_inspect_files ;;
        --output:* | -o:*)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -f -- "$current")
            ;;
        --strict:*)
            [[ $command != explain ]] || _consolidator_inspect_words nothing
            ;;
        --allow:*)
            _consolidator_inspect_words "skipped refused damaged dwarf-differs locations-differ \
                condition-decays condition-removed duplicate-condition dump-empty"
            ;;
        --source:*)
            compopt -o filenames 2>/dev/null
            mapfile -t COMPREPLY < <(compgen -d -- "$current")
            ;;
        --kernel:*) ;;
        *:-*) _consolidator_inspect_options "$command" ;;
        *) _consolidator_inspect_operand "$command" "$(_consolidator_inspect_place)" ;;
    esac
}

complete -F _consolidator_inspect consolidator-inspect
