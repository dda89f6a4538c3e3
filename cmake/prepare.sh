# SPDX-License-Identifier: MIT
# Sourced by ./run and ./test: installs what is missing and builds. Expects $root.

fail()
{
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# The packages that the named lists tell and that are not installed.
missing_packages()
{
    local list name
    for list in "$@"; do
        sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$root/$list"
    done | while read -r name; do
        dpkg-query -W -f='${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || printf '%s\n' "$name"
    done
}

# install_packages LIST...: installs what is missing of these lists, as root or with sudo.
install_packages()
{
    local missing sudo=''
    command -v dpkg-query >/dev/null || fail 'this needs a Debian system (dpkg-query is not there)'
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -z "$missing" ] && return 0

    printf 'Installing: %s\n' "$missing"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail "these packages are missing and there is no sudo; as root: apt-get install $missing"
        sudo=sudo
    fi
    $sudo apt-get update || printf 'apt-get update failed; going on with the lists at hand\n' >&2
    # shellcheck disable=SC2086
    if ! $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; then
        fail "these Debian packages cannot be had: $(missing_packages "$@" | tr '\n' ' ')"
    fi
    missing=$(missing_packages "$@" | tr '\n' ' ')
    [ -z "$missing" ] || fail "still missing after the installation: $missing"
}

# configure PRESET: makes the build folder ready. One that belongs to a checkout in another place, that was made from
# other presets or that cannot be configured is made afresh; ninja configures again when a CMake file changes.
configure()
{
    local preset=$1
    local folder=$root/build/$preset
    local presets home
    presets=$(cksum <"$root/CMakePresets.json")
    home=$(sed -n 's/^CMAKE_HOME_DIRECTORY:INTERNAL=//p' "$folder/CMakeCache.txt" 2>/dev/null)

    if [ -n "$home" ] && [ "$home" -ef "$root" ] && [ -f "$folder/build.ninja" ]; then
        [ "$(cat "$folder/presets.cksum" 2>/dev/null)" = "$presets" ] && return 0
        # A folder that somebody configured by hand keeps the settings that were given to it.
        if [ ! -f "$folder/presets.cksum" ] && (cd "$root" && cmake --preset "$preset"); then
            printf '%s\n' "$presets" >"$folder/presets.cksum"
            return 0
        fi
    fi
    (cd "$root" && cmake --fresh --preset "$preset") || fail "configuring the $preset build failed"
    printf '%s\n' "$presets" >"$folder/presets.cksum"
}

# build PRESET [TARGET...]: configures when needed and builds. A build that cannot even be started, because ninja's
# files are damaged or CMake fails when ninja calls it, is tried once more from a fresh configuration.
build()
{
    local preset=$1
    shift
    local args=()
    local target
    for target in "$@"; do
        args+=(--target "$target")
    done
    configure "$preset"
    if ! (cd "$root" && cmake --build "build/$preset" --target build.ninja); then
        printf 'Configuring the %s build afresh\n' "$preset"
        rm -f "$root/build/$preset/presets.cksum" "$root/build/$preset/build.ninja"
        configure "$preset"
    fi
    (cd "$root" && cmake --build --preset "$preset" "${args[@]}") || fail "the $preset build failed"
}

# Objects are found again in ccache by a checkout in another place.
export CCACHE_BASEDIR=${CCACHE_BASEDIR:-$root}

# Without any locale Qt would take file names for ASCII.
if [ -z "${LC_ALL:-}${LC_CTYPE:-}${LANG:-}" ]; then
    export LC_ALL=C.UTF-8
fi
