#!/bin/bash
# SPDX-License-Identifier: MIT
# Throughput of the codec beside gpsdecode (package gpsd-clients) on the same bytes in the same run, as whole
# processes, with the ratio of the two. Processor time counts, so that other work on the machine does not.
#
#   bench/codec-throughput.sh BUILD-FOLDER [CAPTURES-FOLDER]
set -eu

build=${1:?usage: codec-throughput.sh BUILD-FOLDER [CAPTURES-FOLDER]}
captures=${2:-$(sed -n 's/^GNSS_CAPTURES:PATH=//p' "$build/CMakeCache.txt")}
stream=$build/bin/CodecStream
# In memory where there is such a place, so that no disk is measured.
work=$(mktemp -d -p "$([ -w /dev/shm ] && echo /dev/shm || echo /tmp)")
trap 'rm -rf "$work"' EXIT

[ -x "$stream" ] || { echo "$stream is missing: build with -DGNSS_BUILD_BENCH=ON" >&2; exit 1; }
command -v gpsdecode >/dev/null || { echo "gpsdecode is missing: install gpsd-clients" >&2; exit 1; }
ls "$captures"/*.log >/dev/null

repeat() { # FILE TIMES
    awk -v file="$1" -v times="$2" 'BEGIN { for (i = 0; i < times; i++) print file }' | xargs cat
}

# Least processor time of five runs, in microseconds.
TIMEFORMAT='%3U %3S'
best() { # INPUT COMMAND...
    local input=$1 spent least=
    shift
    for run in 1 2 3 4 5; do
        spent=$({ time "$@" <"$input" >/dev/null 2>&1 || true; } 2>&1 | tr -d . | awk '{ print ($1 + $2) * 1000 }')
        if [ -z "$least" ] || [ "$spent" -lt "$least" ]; then least=$spent; fi
    done
    echo "$least"
}

report() { # NAME ONCE TIMES-FOR-OURS TIMES-FOR-THEIRS
    repeat "$2" "$3" >"$work/ours"
    repeat "$2" "$4" >"$work/theirs"
    ours=$(best "$work/ours" "$stream")
    theirs=$(best "$work/theirs" gpsdecode -m)
    awk -v name="$1" -v a="$(stat -c %s "$work/ours")" -v ta="$ours" -v b="$(stat -c %s "$work/theirs")" \
        -v tb="$theirs" 'BEGIN {
            x = a / ta; y = b / tb
            printf "%-22s codec %8.1f MB/s   gpsdecode -m %7.2f MB/s   ratio %6.1f\n", name, x, y, x / y }'
    "$stream" <"$work/theirs" | sed 's/^/    /'
}

cat "$captures"/*.log >"$work/captures"
# The same with one byte in about 500 changed.
awk 'BEGIN { srand(1); for (i = 0; i < 900; i++) printf "%d\n", int(rand() * ARGV[1]) }' \
    "$(stat -c %s "$work/captures")" >"$work/places"
cp "$work/captures" "$work/noisy"
while read -r place; do
    printf '\377' | dd of="$work/noisy" bs=1 seek="$place" conv=notrunc 2>/dev/null
done <"$work/places"

report "all captures" "$work/captures" 200 10
report "captures, noisy" "$work/noisy" 200 10
for capture in "$captures"/*.log; do
    size=$(stat -c %s "$capture")
    report "$(basename "$capture" .log)" "$capture" $((80000000 / size)) $((4000000 / size))
done
