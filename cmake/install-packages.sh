#!/bin/sh
# Installs the packages of packages.txt that this machine lacks. Where none is missing it needs neither the
# network nor any right.
set -eu
list=$(cd "$(dirname "$0")/.." && pwd)/packages.txt
wanted=$(sed 's/#.*//' "$list")

if ! command -v dpkg-query >/dev/null 2>&1; then
    echo "This is no Debian system: the packages of $list are taken to be installed by other means." >&2
    exit 0
fi

# dpkg-query fails when it has never heard of one of the names; what it prints is right all the same.
# shellcheck disable=SC2086  # one argument for each name
installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' $wanted 2>/dev/null |
            sed -n 's/ installed$//p') || true
missing=
for package in $wanted; do
    printf '%s\n' "$installed" | grep -qxF "$package" || missing="$missing $package"
done
[ -n "$missing" ] || exit 0

as_root=
if [ "$(id -u)" -ne 0 ]; then
    if ! command -v sudo >/dev/null 2>&1; then
        echo "These packages are missing, and installing them takes root or sudo:$missing" >&2
        exit 1
    fi
    as_root=sudo
fi
echo "Installing:$missing" >&2
{
    $as_root apt-get -q update
    # shellcheck disable=SC2086
    $as_root env DEBIAN_FRONTEND=noninteractive apt-get -q install -y --no-install-recommends $missing
} >&2
