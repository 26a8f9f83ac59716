# shellcheck shell=bash
# Fetching Debian's source packages without touching the system's own list of them. Sourced by packaging/make-windows:
#
#     . packaging/windows/sources.sh
#     open_sources CACHE
#     fetch_source freetype
#
# The addresses are those from which the system gets its own packages; apt compares what comes with their checksums.

# open_sources CACHE: keeps what it fetches in CACHE/archives, and unpacks into CACHE/sources.
open_sources() {
    sources_cache=$1
    mkdir -p "$1/apt/lists/partial" "$1/apt/none" "$1/archives" "$1/sources"
    (
        . /etc/os-release
        # shellcheck disable=SC2016  # apt's own variables
        apt-get indextargets --format 'deb-src $(REPO_URI) $(RELEASE) $(COMPONENT) $(ORIGIN)' 'Created-By: Packages' |
            awk -v id="$ID" 'tolower($NF) == id { NF--; print }' | sort -u
    ) >"$1/apt/sources.list"
    if [ ! -s "$1/apt/sources.list" ]; then
        echo "apt does not say where this system's packages come from." >&2
        return 1
    fi
    cat >"$1/apt/apt.conf" <<END
Dir::Etc::SourceList "$1/apt/sources.list";
Dir::Etc::SourceParts "$1/apt/none";
Dir::State::Lists "$1/apt/lists";
Dir::Cache "$1/apt";
APT::Sandbox::User "root";
END
}

# apt_sources COMMAND...: apt-get or apt-cache with these sources.
apt_sources() {
    APT_CONFIG=$sources_cache/apt/apt.conf "$@"
}

# versions_of SOURCE: the versions that there are of it, the newest first.
versions_of() {
    apt_sources apt-cache showsrc --only-source "$1" | awk '$1 == "Version:" { print $2 }' | sort -rV | uniq
}

# unpack_source SOURCE DESCRIPTION
unpack_source() {
    rm -rf "${sources_cache:?}/sources/$1"
    dpkg-source --no-check --extract "$2" "$sources_cache/sources/$1" >/dev/null &&
        same_age "$sources_cache/sources/$1"
}

# same_age FOLDER: what is patched is not newer than what is made from it, so that nothing is made anew.
same_age() {
    find "$1" -exec touch --no-dereference --date=@0 {} +
}

# unpack_original SOURCE VERSION: without Debian's changes.
unpack_original() {
    local original
    original=$(compgen -G "$sources_cache/archives/$1_${2%-*}.orig.tar.*[z2]") || return 1
    rm -rf "${sources_cache:?}/sources/$1"
    mkdir "$sources_cache/sources/$1"
    tar --extract --file "$original" --directory "$sources_cache/sources/$1" --strip-components 1
}

# fetch_source SOURCE: unpacks its newest version that can be had, unless it is there; says which one that is.
fetch_source() {
    local version versions version_file=$sources_cache/sources/$1.version
    if [ -e "$version_file" ]; then
        return
    fi
    mapfile -t versions < <(versions_of "$1")
    for version in "${versions[@]}"; do
        if (cd "$sources_cache/archives" && apt_sources apt-get source -qq --download-only "$1=$version") &&
            unpack_source "$1" "$sources_cache/archives/$1_${version#*:}.dsc"; then
            echo "$1 $version"
            echo "$version" >"$version_file"
            return
        fi
        echo "$1 $version cannot be had whole; trying another one."
    done
    for version in "${versions[@]}"; do
        if unpack_original "$1" "${version#*:}"; then
            echo "$1 ${version%-*}: the authors' own, without Debian's changes"
            echo "${version%-*}" >"$version_file"
            return
        fi
    done
    echo "There is no source of $1 to be had." >&2
    return 1
}
