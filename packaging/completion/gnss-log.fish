# SPDX-License-Identifier: MIT
# fish completion for gnss-log

set -l commands info nmea csv gpx kml geojson help
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -f
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a info -d 'tell what a capture holds'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a nmea -d 'pull the NMEA sentences out'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a csv -d 'write the fixes as CSV'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a gpx -d 'write the fixes as a GPX track'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a kml -d 'write the fixes as a KML track'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a geojson -d 'write the fixes as points'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -a help -d 'tell how a command is used'
complete -c gnss-log -n "not __fish_seen_subcommand_from $commands" -l version -d 'tell the version'
complete -c gnss-log -n "__fish_seen_subcommand_from help" -f -a 'info nmea csv gpx kml geojson'
complete -c gnss-log -n "__fish_seen_subcommand_from info" -l json -d 'write JSON'
complete -c gnss-log -s o -l output -r -F -d 'write there'
complete -c gnss-log -l no-progress -d 'show no progress bar'
complete -c gnss-log -s h -l help -d 'tell how it is used'
