# shellcheck shell=bash
# Installing what a command needs. Sourced by ./play and ./check, which set -u and stand in the project's
# top folder:
#
#     . tools/stage/packages.sh
#     install_packages build demo

package_list=cmake/packages.txt

# packages_of GROUP...: the names of all packages of these groups.
packages_of() {
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' "$package_list"
    done
}

# missing_of PACKAGE...: those that are not installed.
missing_of() {
    local name
    for name in "$@"; do
        # A package that another one provides counts (an architecture prints one line each).
        dpkg-query --show --showformat '${db:Status-Status}\n' "$name" 2>/dev/null | grep -qx installed ||
            echo "$name"
    done
}

# as_root COMMAND...: runs it as root, through sudo when somebody else is asking.
as_root() {
    if [ "$(id -u)" -eq 0 ]; then
        "$@"
    else
        sudo "$@"
    fi
}

# install_packages GROUP...: says what is missing, installs it; status 1 where that cannot be done.
install_packages() {
    local needed missing
    mapfile -t needed < <(packages_of "$@")
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        list_needs "$@" || return 1
        return 0
    fi
    mapfile -t missing < <(missing_of "${needed[@]}")
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "Missing packages, to be installed now: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "Neither root nor sudo is here. As root, run: apt-get install ${missing[*]}" >&2
        return 1
    fi
    # A stale index asks for versions that are gone; without a network the old one may still do.
    as_root apt-get update -qq || echo "The package index could not be brought up to date." >&2
    as_root env DEBIAN_FRONTEND=noninteractive \
        apt-get install --yes -qq --no-install-recommends -o Dpkg::Use-Pty=0 "${missing[@]}" || {
        echo "Installing failed: ${missing[*]}" >&2
        return 1
    }
    mapfile -t missing < <(missing_of "${needed[@]}")
    if [ ${#missing[@]} -ne 0 ]; then
        echo "Still missing: ${missing[*]}" >&2
        return 1
    fi
}

# list_needs GROUP...: for a system without apt, where nothing can be installed or looked up from here.
# Status 1, unless ZANTO_SKIP_INSTALL says that everything is there under this system's own names.
list_needs() {
    local group
    if [ -n "${ZANTO_SKIP_INSTALL:-}" ]; then
        return 0
    fi
    {
        echo "There is no apt on this system. Please install these (their Debian names, and what for):"
        for group in "$@"; do
            awk -v group="$group" '$1 == group { $1 = ""; name = $2; $2 = ""; sub(/^ +/, "");
                                                 printf "  %-20s %s\n", name, $0 }' "$package_list"
        done
        echo "and then run: ZANTO_SKIP_INSTALL=1 $0"
    } >&2
    return 1
}
