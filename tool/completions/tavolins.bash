# Completion of tavolins for bash.

_tavolins_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$2")
}

# Proposes options where one begins.
_tavolins_options() {
    if [[ $current == -* ]]; then
        _tavolins_words "$1" "$current"
    fi
}

_tavolins() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    if [ "$COMP_CWORD" -eq 1 ]; then
        _tavolins_words "check explain show diff new schema shot --help --version" "$current"
        return
    fi
    case $previous in
        --format)
            case ${COMP_WORDS[1]} in
                check) _tavolins_words "text json sarif" "$current" ;;
                show) _tavolins_words "text json css qml" "$current" ;;
                diff) _tavolins_words "text json" "$current" ;;
                schema) _tavolins_words "json markdown" "$current" ;;
            esac
            return
            ;;
        --contrast) _tavolins_words "AA AAA off" "$current"; return ;;
        --color) _tavolins_words "auto always never" "$current"; return ;;
        --disable | --only)
            _tavolins_words "$(tavolins check --list-codes 2>/dev/null | cut -d ' ' -f 1)" "$current"
            return
            ;;
        --import | --folder) mapfile -t COMPREPLY < <(compgen -d -- "$current"); return ;;
    esac
    case ${COMP_WORDS[1]} in
        check)
            _tavolins_options "--format --contrast --disable --only --werror --watch --import
                --list-codes --color --help"
            ;;
        explain)
            _tavolins_words "$(tavolins check --list-codes 2>/dev/null | cut -d ' ' -f 1)" "$current"
            ;;
        show) _tavolins_options "--class --key --format --folder --color --help" ;;
        diff) _tavolins_options "--class --format --folder --color --help" ;;
        new) _tavolins_options "--background --accent --output --help" ;;
        schema) _tavolins_options "--format --help" ;;
        shot) _tavolins_options "--output --size --theme --help" ;;
    esac
}

# Without a proposal of its own, files are proposed.
complete -o default -F _tavolins tavolins
