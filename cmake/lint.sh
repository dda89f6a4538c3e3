# SPDX-License-Identifier: MIT
# Sourced by ./test: the checks over the sources. Each prints what it finds; all of them run before the end.

lint_folder=$root/build/lint

# Everything in the tree but what builds and runs leave there, one path a line.
tree_files()
{
    (cd "$root" && find . \( -path ./build -o -path ./workbench -o -path ./.git -o -path ./.cache \) -prune -o -type f \
        -print | sed 's|^\./||' | sort)
}

cpp_files()
{
    tree_files | grep -E '\.(cpp|h)$'
}

check_format()
{
    (cd "$root" && cpp_files | xargs -d '\n' clang-format --dry-run -Werror)
}

# Every source names its licence in one of its first three lines.
check_licence()
{
    local file bad=0
    while read -r file; do
        head -n 3 "$root/$file" | grep -q 'SPDX-License-Identifier: MIT' && continue
        printf '%s: no licence line\n' "$file"
        bad=1
    done < <(tree_files | grep -E '\.(cpp|h|cmake|sh|py|qss|fish|bash)$|(^|/)(CMakeLists.txt|run|test|packages.*\.txt|_gnss-log)$')
    return "$bad"
}

check_cppcheck()
{
    mkdir -p "$lint_folder/cppcheck"
    (cd "$root" && cpp_files | grep '\.cpp$' | cppcheck --file-list=- --quiet --error-exitcode=1 -j "$(nproc)" \
        --enable=warning,performance,portability --suppressions-list=cmake/cppcheck.txt \
        --std=c++17 --library=qt -I . -I plugin -I tests/support --cppcheck-build-dir="$lint_folder/cppcheck" \
        --template='{file}:{line}: {severity}: {message} [{id}]')
}

# The sources that the release preset compiles, each as "KEY FILE". The key changes with everything that can change
# what clang-tidy says: its version and settings, the command, the source and what that includes.
tidy_list()
{
    local folder=$root/build/release
    local settings file command object
    settings=$(clang-tidy --version; cat "$root/.clang-tidy")
    ninja -C "$folder" -t deps | awk '
        /^[^ ].*: #deps/ { object = $1; sub(/:$/, "", object) }
        /^ / && $1 !~ /^\/usr\// { print object, $1 }' >"$lint_folder/deps"
    sed -n -e 's/^  "command": "\(.*\)",$/\1/p' -e 's/^  "file": "\(.*\)".*$/\1/p' "$lint_folder/compile_commands.json" |
        while read -r command && read -r file; do
            case $file in "$root/build/"*) continue ;; esac
            object=${command##* -o }
            object=${object%% *}
            printf '%s %s\n' "$({
                printf '%s\n%s\n' "$settings" "$command"
                cd "$folder" && awk -v object="$object" '$1 == object { print $2 }' "$lint_folder/deps" |
                    xargs -d '\n' sha256sum -- "$file"
            } | sha256sum | cut -c1-32)" "$file"
        done | sort -u -k 2,2
}

# tidy_file KEY FILE: one source; a clean result is remembered under its key.
tidy_file()
{
    local good=$lint_folder/tidy/$1
    local said
    [ -f "$good" ] && return 0
    if ! said=$(clang-tidy --quiet -p "$lint_folder" "$2" 2>/dev/null); then
        printf '%s\n' "${said:-$2: clang-tidy failed}"
        return 1
    fi
    touch "$good"
}

# Over all that the release preset compiles; the benchmarks and the fuzz target are left to the other checks.
check_tidy()
{
    mkdir -p "$lint_folder/tidy"
    build release
    # g++ has options that Clang does not know, and a precompiled header that it cannot read.
    sed -E -e 's/ -(fno-gnu-unique|fpch-preprocess|Winvalid-pch)//g' -e 's/ -include [^ ]*cmake_pch\.hxx//' \
        "$root/build/release/compile_commands.json" >"$lint_folder/compile_commands.json"
    export lint_folder
    export -f tidy_file
    tidy_list >"$lint_folder/tidy.list"
    printf '%s sources\n' "$(wc -l <"$lint_folder/tidy.list")"
    xargs -P "$(nproc)" -L 1 bash -c 'tidy_file "$@"' tidy <"$lint_folder/tidy.list"
}

# lint all|fast: the exit status tells whether all of it is clean.
lint()
{
    local checks='format licence cppcheck'
    local check bad=''
    [ "$1" = all ] && checks="$checks tidy"
    mkdir -p "$lint_folder"
    for check in $checks; do
        printf 'Checking: %s\n' "$check"
        "check_$check" || bad="$bad $check"
    done
    if [ -n "$bad" ]; then
        printf 'Findings:%s\n' "$bad"
        return 1
    fi
    printf 'Clean: %s\n' "$checks"
}
