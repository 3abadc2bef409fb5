# shellcheck shell=bash
# SPDX-License-Identifier: GPL-3.0-or-later
#
# Sourced by scripts that build libraries from Debian's source packages.

# debian_source WORK NAME TARGET [SUITE]: unpacks the source package NAME, of another suite than the system's if one is
# given, into the folder TARGET. The list of packages is one of its own in the folder WORK: the system's need not name
# source packages, and nothing of the system changes.
debian_source()
(
    set -e
    local apt=$1/apt-${4:-system} name=$2 target=$3 suite=${4:-} options list
    mkdir -p "$apt/parts" "$apt/lists/partial" "$apt/archives/partial" "$apt/$name"
    options=(-o Dir::Etc::SourceList=/dev/null -o Dir::Etc::SourceParts="$apt/parts" -o Dir::State::Lists="$apt/lists"
        -o Dir::Cache="$apt" -o APT::Sandbox::User="$(id -un)")
    if [ ! -f "$apt/updated" ]; then
        for list in /etc/apt/sources.list /etc/apt/sources.list.d/*.list; do
            [ ! -f "$list" ] || sed -n 's/^deb /deb-src /p' "$list" >"$apt/parts/$(basename "$list" .list).list"
        done
        for list in /etc/apt/sources.list.d/*.sources; do
            [ ! -f "$list" ] || sed 's/^Types:.*/Types: deb-src/' "$list" >"$apt/parts/${list##*/}"
        done
        # Only the archive itself has every suite; its updates and those for security are named otherwise.
        [ -z "$suite" ] || sed -i "s/^Suites: [a-z]* .*/Suites: $suite/; s/^Suites: [a-z]*-security/Suites: $suite-security/" \
            "$apt"/parts/*.sources
        apt-get "${options[@]}" -q update
        touch "$apt/updated"
    fi
    cd "$apt/$name"
    apt-get "${options[@]}" -q source --download-only "$name"
    dpkg-source --no-check -x ./*.dsc "$target"
)
