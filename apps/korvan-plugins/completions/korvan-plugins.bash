# Completion of korvan-plugins for bash.

_korvan_plugins() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]} command='' word
    local options='--folder --support-dir --defaults --default --safe-mode --resources --host-version --blocklist-url --json --help --version'
    local commands='list info menu edit run supply enable disable state blocklist updates watch listen send unpack export create validate test pack compare-versions demo'

    for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
        case " $commands " in *" $word "*) command=$word ;; esac
    done
    case $previous in
    --folder | --support-dir | --resources)
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
        return
        ;;
    --defaults | --standalone | --document | --dump-document | --output | --feed | --profile)
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
        return
        ;;
    --all)
        mapfile -t COMPREPLY < <(compgen -W 'latest compatible' -- "$current")
        return
        ;;
    --template)
        mapfile -t COMPREPLY < <(compgen -W 'command long-running data-supplier' -- "$current")
        return
        ;;
    --identifier | --url | --default | --host-version | --blocklist-url | --handler | --context | --wait | --filter | --limit) return ;;
    esac
    case $command in
    run) options+=' --standalone --handler --document --context --wait --dump-document --profile --trace' ;;
    supply) options+=' --document --wait --dump-document' ;;
    create) options+=' --identifier --template' ;;
    test) options+=' --document --filter --limit' ;;
    pack) options+=' --output --feed --url' ;;
    blocklist) options+=' show update' ;;
    updates) options+=' check download install clear --all' ;;
    '') options+=" $commands" ;;
    esac
    if [[ $command == unpack && $current != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ $command == test && $current != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ ( $command == info || $command == export || $command == validate || $command == pack ) && $current != -* ]]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$current")
    else
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    fi
}
complete -F _korvan_plugins korvan-plugins
