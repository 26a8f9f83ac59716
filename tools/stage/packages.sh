# shellcheck shell=bash
# Installing what a command needs. Sourced by ./play and ./check, which set -u and stand in the project's
# top folder:
#
#     . tools/stage/packages.sh
#     install_packages build demo
#
# Nothing is ever removed: where apt would remove a package, nothing is installed.

package_list=cmake/packages.txt

# entries_of GROUP...: the names of these groups as the list has them, alternatives among them.
entries_of() {
    local group
    for group in "$@"; do
        awk -v group="$group" '$1 == group { print $2 }' "$package_list"
    done
}

# installed NAME: whether a package of that name, or one that provides it, is installed.
installed() {
    # dpkg-query prints one line for each architecture.
    dpkg-query --show --showformat '${db:Status-Status}\n' "$1" 2>/dev/null | grep -qx installed
}

# choice_of A|B+C: the packages of the first alternative whose first package is installed, else of the first one.
choice_of() {
    local alternatives alternative chosen
    IFS='|' read -ra alternatives <<<"$1"
    chosen=${alternatives[0]}
    for alternative in "${alternatives[@]}"; do
        if installed "${alternative%%+*}"; then
            chosen=$alternative
            break
        fi
    done
    tr + '\n' <<<"$chosen"
}

# packages_of GROUP...: the names of all packages of these groups, for this system.
packages_of() {
    local entry
    for entry in $(entries_of "$@"); do
        case $entry in
        *'|'*) choice_of "$entry" ;;
        *) echo "$entry" ;;
        esac
    done
}

# missing_of PACKAGE...: those that are not installed.
missing_of() {
    local name
    for name in "$@"; do
        installed "$name" || echo "$name"
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

apt_install=(env DEBIAN_FRONTEND=noninteractive LC_ALL=C.UTF-8 apt-get install --no-install-recommends)

# tell_plan SIMULATION: what apt-get would do, one line for each kind of change. Status 1 where it would remove anything.
tell_plan() {
    awk '$1 == "Inst" { kind = $3 ~ /^\[/ ? "upgraded" : "installed" }
         $1 == "Remv" { kind = "removed" }
         $1 == "Inst" || $1 == "Remv" { names[kind] = names[kind] " " $2 }
         END {
             split("installed upgraded removed", kinds)
             for (i = 1; i in kinds; i++)
                 if (kinds[i] in names) print "  to be " kinds[i] ":" names[kinds[i]]
             exit ("removed" in names) ? 1 : 0
         }' <<<"$1"
}

# install_packages GROUP...: says what is missing, installs it; status 1 where that cannot be done.
install_packages() {
    local needed missing plan
    if ! command -v apt-get >/dev/null || ! command -v dpkg-query >/dev/null; then
        list_needs "$@" || return 1
        return 0
    fi
    mapfile -t needed < <(packages_of "$@")
    mapfile -t missing < <(missing_of "${needed[@]}")
    if [ ${#missing[@]} -eq 0 ]; then
        return 0
    fi
    echo "Missing packages: ${missing[*]}"
    if [ "$(id -u)" -ne 0 ] && ! command -v sudo >/dev/null; then
        echo "Neither root nor sudo is here. As root, run: apt-get install --no-remove ${missing[*]}" >&2
        return 1
    fi
    # A stale index asks for versions that are gone; without a network the old one may still do.
    as_root apt-get update -qq || echo "The package index could not be brought up to date." >&2
    plan=$("${apt_install[@]}" --simulate "${missing[@]}" 2>&1) || {
        printf '%s\n' "$plan" "apt cannot install these: ${missing[*]}" >&2
        return 1
    }
    echo "What apt does about them:"
    tell_plan "$plan" || {
        echo "Packages of yours would be removed, so nothing is installed. Please install these another way:" \
            "${missing[*]}" >&2
        return 1
    }
    as_root "${apt_install[@]}" --no-remove --yes -qq -o Dpkg::Use-Pty=0 "${missing[@]}" || {
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
