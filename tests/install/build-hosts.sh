#!/bin/sh
# build-hosts.sh CMAKE BUILD FOLDER COMPILER: installs the build into FOLDER, moves the copy once, and builds
# and runs hosts against it: by the CMake package, by pkg-config, and the program of the README.
set -eu
cmake=$1
build=$2
folder=$3
compiler=$4
here=$(cd "$(dirname "$0")" && pwd)

rm -rf "$folder"
mkdir -p "$folder"
"$cmake" --install "$build" --prefix "$folder/staging" >"$folder/install.log"
mv "$folder/staging" "$folder/prefix" # nothing may remember where it was installed first
prefix=$folder/prefix
if grep -rlF "$folder/staging" "$prefix"; then
    echo "These files hold the path they were installed to." >&2
    exit 1
fi

build_with_cmake() {
    if ! { "$cmake" -S "$1" -B "$2" -G Ninja -DCMAKE_PREFIX_PATH="$prefix" -DCMAKE_CXX_COMPILER="$compiler" \
               -DCMAKE_CXX_FLAGS="-Wall -Wextra -Werror" && "$cmake" --build "$2"; } >"$2.log"
    then
        cat "$2.log" >&2
        exit 1
    fi
}

echo "A host with the CMake package"
build_with_cmake "$here/host" "$folder/host"
"$folder/host/host" "$folder/host.png"
[ -s "$folder/host.png" ]

echo "A host with pkg-config"
pc=$(dirname "$(find "$prefix" -name QKUILib.pc)")
export PKG_CONFIG_PATH="$pc"
# shellcheck disable=SC2046  # flags are words
"$compiler" -std=c++20 -Wall -Wextra -Werror "$here/host/plain.cpp" -o "$folder/plain" \
    $(pkg-config --cflags --libs QKUILib)
LD_LIBRARY_PATH=$(pkg-config --variable=libdir QKUILib) "$folder/plain" "$here/host/button.png"

echo "The program of the README"
python3 "$here/readme_program.py" "$here/../../README.md" "$folder/readme"
cp "$here/host/button.png" "$folder/readme/close.png"
cp "$here/host/button.png" "$folder/readme/panel.png"
build_with_cmake "$folder/readme" "$folder/readme/build"
(cd "$folder/readme" && ./build/hello hello.png && [ -s hello.png ])
