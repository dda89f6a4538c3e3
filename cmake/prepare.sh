# SPDX-License-Identifier: MIT
# Sourced by ./run, ./test and .ci/run: installs what is missing and builds. Expects $root.

fail()
{
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

package_list()
{
    sed -e 's/#.*//' -e 's/[[:space:]]//g' -e '/^$/d' "$root/packages.txt"
}

missing_packages()
{
    local name
    for name in $(package_list); do
        dpkg-query -W -f='${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed || printf '%s\n' "$name"
    done
}

# Installs the packages of packages.txt that are missing, as root or with sudo.
install_packages()
{
    local missing sudo=''
    command -v dpkg-query >/dev/null || fail 'this needs a Debian system (dpkg-query is not there)'
    missing=$(missing_packages)
    [ -z "$missing" ] && return 0

    printf 'Installing: %s\n' "$(printf '%s' "$missing" | tr '\n' ' ')"
    if [ "$(id -u)" -ne 0 ]; then
        command -v sudo >/dev/null ||
            fail "these packages are missing and there is no sudo; as root: apt-get install $(printf '%s' "$missing" | tr '\n' ' ')"
        sudo=sudo
    fi
    $sudo apt-get update || printf 'apt-get update failed; going on with the lists at hand\n' >&2
    # shellcheck disable=SC2086
    if ! $sudo env DEBIAN_FRONTEND=noninteractive apt-get install -y --no-install-recommends $missing; then
        fail "these Debian packages cannot be had: $(missing_packages | tr '\n' ' ')"
    fi
    missing=$(missing_packages)
    [ -z "$missing" ] || fail "still missing after the installation: $missing"
}

# build PRESET [TARGET...]: configures when needed and builds.
build()
{
    local preset=$1
    shift
    local args=()
    local target
    for target in "$@"; do
        args+=(--target "$target")
    done
    if [ ! -f "$root/build/$preset/build.ninja" ]; then
        (cd "$root" && cmake --preset "$preset") || fail "configuring the $preset build failed"
    fi
    (cd "$root" && cmake --build --preset "$preset" "${args[@]}") || fail "the $preset build failed"
}

# Without any locale Qt would take file names for ASCII.
if [ -z "${LC_ALL:-}${LC_CTYPE:-}${LANG:-}" ]; then
    export LC_ALL=C.UTF-8
fi
