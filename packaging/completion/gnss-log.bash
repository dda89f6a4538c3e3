# SPDX-License-Identifier: MIT
# bash completion for gnss-log

_gnss_log() {
    local current=${COMP_WORDS[COMP_CWORD]} previous=${COMP_WORDS[COMP_CWORD - 1]}
    local commands='info nmea csv gpx kml geojson help' command= i
    COMPREPLY=()
    for ((i = 1; i < COMP_CWORD; i++)); do
        case ${COMP_WORDS[i]} in
            info | nmea | csv | gpx | kml | geojson | help) command=${COMP_WORDS[i]}; break ;;
        esac
    done
    if [[ $previous == -o || $previous == --output ]]; then
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    elif [[ -z $command ]]; then
        mapfile -t COMPREPLY < <(compgen -W "$commands --help --version" -- "$current")
    elif [[ $command == help ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${commands% help}" -- "$current")
    elif [[ $current == -* ]]; then
        local options='--output --no-progress --help'
        [[ $command == info ]] && options+=' --json'
        mapfile -t COMPREPLY < <(compgen -W "$options" -- "$current")
    else
        compopt -o filenames 2>/dev/null
        mapfile -t COMPREPLY < <(compgen -f -- "$current")
    fi
}
complete -F _gnss_log gnss-log
