#!/bin/bash
# SPDX-License-Identifier: MIT
# The production test's way from bytes to an epoch's satellites, beside grep that only finds the same sentences and
# gpsdecode that decodes them (package gpsd-clients): whole processes on the same bytes in the same run. Processor
# time counts, so that other work on the machine does not.
#
#   bench/station-scan.sh BUILD-FOLDER [CAPTURES-FOLDER]
set -eu
export LC_ALL=C

build=${1:?usage: station-scan.sh BUILD-FOLDER [CAPTURES-FOLDER]}
captures=${2:-$(sed -n 's/^GNSS_CAPTURES:PATH=//p' "$build/CMakeCache.txt")}
[ -x "$build/bin/StationBench" ] || { echo "StationBench is missing: build with -DGNSS_BUILD_BENCH=ON" >&2; exit 1; }
work=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo /tmp)")
trap 'rm -rf "$work"' EXIT

repeat() { for ((i = 0; i < $2; i++)); do cat "$1"; done; }
cat "$captures"/*.log >"$work/once"
repeat "$work/once" 200 >"$work/long"
repeat "$work/once" 20 >"$work/short"

TIMEFORMAT='%3U %3S'
# To a file: grep stops at its first line when its output goes to /dev/null.
best() { # INPUT COMMAND...: least processor time of five runs, in MB/s
    local input=$1 spent least=
    shift
    for run in 1 2 3 4 5; do
        spent=$({ time "$@" <"$input" >"$work/out" 2>&1 || true; } 2>&1 | tr -d . | awk '{ print ($1 + $2) * 1000 }')
        if [ -z "$least" ] || [ "$spent" -lt "$least" ]; then least=$spent; fi
    done
    awk -v bytes="$(stat -c %s "$input")" -v time="$least" 'BEGIN { printf "%.1f", bytes / time }'
}

ours=$(best "$work/long" "$build/bin/StationBench" scan)
"$build/bin/StationBench" scan <"$work/long"
printf '%-44s %7.1f MB/s\n' "scan, fields, epochs and their signals" "$ours"
line() { printf '%-44s %7.1f MB/s   ours %5.1f times as fast\n' "$1" "$2" "$(awk "BEGIN { print $ours / $2 }")"; }
line "grep -a -c of the same sentences" \
    "$(best "$work/long" grep -a -c -E '\$[^$]*(GGA|GSA|GSV)[^$]*'$'\r''$')"
line "gpsdecode -m" "$(best "$work/short" gpsdecode -m)"
