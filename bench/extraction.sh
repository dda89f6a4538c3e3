#!/usr/bin/env bash
# SPDX-License-Identifier: MIT
# NMEA extraction from a noisy capture, beside grep with the same pattern on the same bytes in the same run:
# speed, memory, and whether the outputs are the same byte for byte. And the summary of the same capture.
# The speed is given by the clock and by processor time, which other work on the machine disturbs less.
#
#   bench/extraction.sh BUILD-FOLDER [MEGABYTES]
set -eu
export LC_ALL=C

build=${1:?usage: extraction.sh BUILD-FOLDER [MEGABYTES]}
megabytes=${2:-500}
for program in NoisyCapture ExtractFile gnss-log; do
    [ -x "$build/bin/$program" ] || { echo "$program is missing: build with -DGNSS_BUILD_BENCH=ON" >&2; exit 1; }
done
# In memory where there is room for it, so that no disk is measured.
free=$(df -k --output=avail /dev/shm 2>/dev/null | tail -n 1)
work=$(mktemp -d -p "$([ "${free:-0}" -gt $((megabytes * 5000)) ] && echo /dev/shm || echo /tmp)")
trap 'rm -rf "$work"' EXIT

capture=$work/capture.bin
"$build/bin/NoisyCapture" "$megabytes" >"$capture"
size=$(stat -c %s "$capture")
exact='\$[^$]{4,121}\*[^$]{2}'$'\r$'
# Without the limits of length grep is faster, and finds sentences that are too short or too long as well.
loose='\$[^$]*\*..'$'\r$'

names=("grep -a -o -E" "grep, lengths not limited" "gnss-log nmea" "window (500-byte reads)" "gnss-log info")
run() { # NUMBER
    case $1 in
        0) grep -a -o -E "$exact" "$capture" >"$work/exact" ;;
        1) grep -a -o -E "$loose" "$capture" >"$work/loose" ;;
        2) "$build/bin/gnss-log" nmea "$capture" >"$work/line" ;;
        3) "$build/bin/ExtractFile" "$capture" ;;
        4) "$build/bin/gnss-log" info "$capture" >"$work/info" ;;
    esac
}

# Best of three. The programs take turns, so that all meet the same machine.
TIMEFORMAT='%R %U %S'
for turn in 1 2 3; do
    for number in "${!names[@]}"; do
        { time run "$number"; } 2>"$work/time"
        awk -v number="$number" '{ printf "%d %.3f %.3f\n", number, $1, $2 + $3 }' "$work/time" >>"$work/times"
    done
done

echo "$((size / 1000000)) MB; $(wc -l <"$work/exact") sentences of $(($(stat -c %s "$work/exact") / 1000000)) MB in them"
for number in "${!names[@]}"; do
    awk -v name="${names[$number]}" -v number="$number" -v size="$size" '
        function least(a, b) { return a == "" || b < a ? b : a }
        { clock[$1] = least(clock[$1], $2); work[$1] = least(work[$1], $3) }
        END {
            printf "%-26s clock %7.1f MB/s %5.1f times grep   processor %7.1f MB/s %5.1f times grep\n", name,
                size / 1e6 / clock[number], clock[0] / clock[number],
                size / 1e6 / work[number], work[0] / work[number] }' "$work/times"
done

failed=0
for output in line capture.nmea; do
    if cmp -s "$work/exact" "$work/$output"; then
        echo "$output: the same bytes as grep's"
    else
        echo "$output: DIFFERS from grep's"
        failed=1
    fi
done
if [ -x /usr/bin/time ]; then
    for command in nmea info csv; do
        /usr/bin/time -f "gnss-log $command: %M KiB of memory at most" "$build/bin/gnss-log" "$command" "$capture" \
            2>&1 >/dev/null | tail -n 1
    done
fi
exit "$failed"
