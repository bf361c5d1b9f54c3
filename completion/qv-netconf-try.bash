# bash completion for qv-netconf-try: [--timeout SECONDS] [--confirm-when COMMAND]... [--wait]
# [--force] [--json] CONFIG_JSON [USER [PASSWORD]], or one of --confirm --rollback --status
# --boot --watch --help

_qv_netconf_try() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    case $prev in
        --timeout | --confirm-when) return ;;
    esac
    if [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--timeout --confirm-when --wait --force --json
            --confirm --rollback --status --boot --watch --help" -- "$cur")
    else
        compopt -o filenames 2>/dev/null
        # config.json files and the directories that may hold them
        mapfile -t COMPREPLY < <(compgen -d -- "$cur"; compgen -f -X '!*.json' -- "$cur")
    fi
}
complete -F _qv_netconf_try qv-netconf-try
