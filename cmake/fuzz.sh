# SPDX-License-Identifier: MIT
# Sourced by ./test: the fuzz target over the captures. What it finds on its way stays in build/fuzz/corpus.

# fuzz SECONDS: the exit status is the target's.
fuzz()
{
    local seconds=$1
    local folder=$root/build/fuzz
    local captures
    build fuzz DecodeFuzz
    captures=$(sed -n 's/^GNSS_CAPTURES:PATH=//p' "$folder/CMakeCache.txt")
    mkdir -p "$folder/corpus"
    local corpus=("$folder/corpus")
    if [ -d "$captures" ]; then
        corpus+=("$captures")
    else
        printf 'Skipped: no captures in %s: the fuzz target starts from nothing\n' "$captures"
    fi
    # Inputs are cut to this length; a failing one is left in the build folder.
    "$folder/bin/DecodeFuzz" -max_len=8192 -max_total_time="$seconds" -print_final_stats=1 -verbosity=1 \
        -artifact_prefix="$folder/" "${corpus[@]}"
}
