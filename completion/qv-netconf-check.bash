# bash completion for qv-netconf-check: [--json] [--certificates DIR] CONFIG_JSON, [--json] --backend

_qv_netconf_check() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD - 1]}
    COMPREPLY=()
    compopt -o filenames 2>/dev/null
    if [ "$prev" = --certificates ]; then
        mapfile -t COMPREPLY < <(compgen -d -- "$cur")
    elif [[ $cur == -* ]]; then
        mapfile -t COMPREPLY < <(compgen -W "--json --certificates --backend --help" -- "$cur")
    else
        # config.json files and the directories that may hold them
        mapfile -t COMPREPLY < <(compgen -d -- "$cur"; compgen -f -X '!*.json' -- "$cur")
    fi
}
complete -F _qv_netconf_check qv-netconf-check
