# SPDX-License-Identifier: MIT
# Sourced by ./test: the lines that the tests run, by room. Programs that tests start count too, as far as they end by
# themselves: one that is killed leaves no counters.

rooms='protocol codec seeds receiver service cli tools plugin/base plugin/bridge plugin/line plugin/widgets
    plugin/views plugin/assist plugin/commands plugin/performance plugin/production plugin/window plugin/entry host'

# Reads gcovr's table of files: NAME,LINES,COVERED,...; the rooms come in the order given.
table_by_room()
{
    awk -F, -v rooms="$rooms" '
        function row(name, all, covered) {
            printf "%-20s %7d %9d %6.1f %%\n", name, all, covered, all ? 100 * covered / all : 0
        }
        FNR > 1 {
            split($1, part, "/")
            room = part[1] == "plugin" ? part[1] "/" part[2] : part[1]
            lines[room] += $2; covered[room] += $3; all += $2; run += $3
        }
        END {
            printf "%-20s %7s %9s %8s\n", "room", "lines", "covered", "per cent"
            count = split(rooms, name, " ")
            for (i = 1; i <= count; ++i) {
                row(name[i], lines[name[i]], covered[name[i]])
                delete lines[name[i]]
            }
            for (other in lines)
                row(other, lines[other], covered[other])
            row("all", all, run)
        }'
}

# Every test in the coverage build, then the table. The exit status is CTest's, or gcovr's when that fails.
coverage()
{
    local folder=$root/build/coverage
    local status
    build coverage
    find "$folder" -name '*.gcda' -delete
    run_tests coverage
    status=$?
    printf '\nLine coverage by room (processes that a test kills do not count):\n'
    gcovr --root "$root" --object-directory "$folder" -j "$(nproc)" --csv \
        --exclude "$root/build/" --exclude "$root/tests/" "$folder" >"$folder/coverage.csv" ||
        fail 'gcovr cannot read the counters'
    table_by_room <"$folder/coverage.csv"
    return "$status"
}
