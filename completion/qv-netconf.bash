# bash completion for qv-netconf: COMMAND MODE [CONFIG_JSON [USER [PASSWORD]]]

_qv_netconf() {
    local cur=${COMP_WORDS[COMP_CWORD]}
    local commands="set-config connect-wifi connect-ethernet is-wired-linked is-wlan0-connected
        get-wifi-list disconnect-wifi disconnect-ethernet get-eth0-parameters get-wlan0-parameters
        autoconnect is-wired-on is-wireless-on is-eth0-connected check-wireless-point
        turn-on-wireless turn-on-wired turn-off-wireless turn-off-wired get-default-gateway
        set-open-wired-config get-tun0-parameters get-ppp0-parameters is-tun0-connected
        is-ppp0-connected set-wpa-config get-ipsec-parameters is-ipsec-connected"
    COMPREPLY=()
    case $COMP_CWORD in
        1) mapfile -t COMPREPLY < <(compgen -W "$commands" -- "$cur") ;;
        2) mapfile -t COMPREPLY < <(compgen -W "M A" -- "$cur") ;;
        3)
            case ${COMP_WORDS[1]} in
                set-config | set-open-wired-config | set-wpa-config | autoconnect)
                    # config.json files and the directories that may hold them
                    compopt -o filenames 2>/dev/null
                    mapfile -t COMPREPLY < <(compgen -d -- "$cur"; compgen -f -X '!*.json' -- "$cur")
                    ;;
            esac
            ;;
    esac
}
complete -F _qv_netconf qv-netconf
