#!/bin/sh
# packages.sh CMAKE BUILD FOLDER COMPILER: makes the Debian packages of the build, installs them into a root and a
# package database below FOLDER that starts as this machine's, so that what they depend on is looked for, builds
# and runs a host against them, makes a package of a program, and removes them. The machine itself stays as it is.
set -eu
cmake=$1
build=$2
folder=$3
compiler=$4
here=$(cd "$(dirname "$0")" && pwd)
root=$folder/root

rm -rf "$folder"
database=$root/var/lib/dpkg
mkdir -p "$database/info" "$database/updates" "$database/triggers" "$folder/bin"
cp /var/lib/dpkg/status "$database/status"
cp "$here/host/"* "$folder"
# The packages' scripts run with this one, which knows no other folder.
printf '#!/bin/sh\nexec /sbin/ldconfig -n "%s"\n' "$root/usr/lib" >"$folder/bin/ldconfig"
chmod +x "$folder/bin/ldconfig"

quietly() {
    if ! "$@" >"$folder/log" 2>&1; then
        grep -v 'files list file for package' "$folder/log" >&2
        exit 1
    fi
}
packages() {
    quietly env PATH="$folder/bin:$PATH:/usr/sbin:/sbin" \
        fakeroot dpkg --root="$root" --force-script-chrootless --no-triggers "$@"
}

echo "Packages"
quietly "${cmake%cmake}cpack" --config "$build/CPackConfig.cmake" -B "$folder/packages"
packages --install "$folder"/packages/*.deb

echo "A host built against what they installed"
quietly "$cmake" -S "$folder" -B "$folder/build" -G Ninja -DCMAKE_PREFIX_PATH="$root/usr" \
    -DCMAKE_CXX_COMPILER="$compiler"
quietly "$cmake" --build "$folder/build"
if ! ldd "$folder/build/host" | grep -q "$root/usr/lib"; then
    echo "The host uses another library than the package's." >&2
    exit 1
fi
"$folder/build/host" "$folder/host.png"
[ -s "$folder/host.png" ]

echo "A package of a program's own, as a page says"
for page in main-window deploying; do
    python3 "$here/readme_program.py" "$here/../../docs/programs/$page.md" "$folder/tea"
done
cp "$here/host/button.png" "$folder/tea"
# It looks the library's path up, which is another one here; what the package says of the library is the same.
printf '#!/bin/sh\nexec /usr/bin/dpkg-shlibdeps -l"%s" -L"%s" "$@"\n' \
    "$root/usr/lib" "$(find "$database/info" -name 'libqkuilib1*.shlibs')" >"$folder/bin/dpkg-shlibdeps"
chmod +x "$folder/bin/dpkg-shlibdeps"
quietly "$cmake" -S "$folder/tea" -B "$folder/tea/build" -G Ninja -DCMAKE_PREFIX_PATH="$root/usr" \
    -DCMAKE_CXX_COMPILER="$compiler"
quietly "$cmake" --build "$folder/tea/build"
quietly env PATH="$folder/bin:$PATH" "${cmake%cmake}cpack" --config "$folder/tea/build/CPackConfig.cmake" -B "$folder/tea"
if ! dpkg-deb --field "$folder"/tea/tea_*.deb Depends | grep -q 'libqkuilib1 (>= '; then
    echo "The program's package does not ask for the library." >&2
    exit 1
fi

echo "Removed again"
packages --purge libqkuilib-dev qkuilib-html libqkuilib1
left=$(find "$root" -path "$root/var" -prune -o -not -type d -print)
if [ -n "$left" ]; then
    echo "Left behind: $left" >&2
    exit 1
fi
