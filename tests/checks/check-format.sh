#!/bin/sh
# Names the sources that are not laid out as .clang-format says, and fails if there is one. With --fix it
# lays them out instead.
set -eu
cd "$(dirname "$0")/../.."
sources() {
    for folder in include src platform examples tests bench fuzz; do
        [ ! -d "$folder" ] || find "$folder" \( -name '*.h' -o -name '*.cpp' \) -print0
    done
}
if [ "${1:-}" = --fix ]; then
    sources | xargs -0 clang-format --style=file -i
    exit
fi
if report=$(sources | xargs -0 clang-format --style=file --dry-run -Werror 2>&1); then
    exit 0
fi
printf '%s\n' "$report" | grep -E '^[^ ]+:[0-9]+:[0-9]+: ' | cut -d : -f 1 | sort | uniq -c ||
    printf '%s\n' "$report"
echo "Places that are laid out otherwise, by file. tests/checks/check-format.sh --fix puts them right."
exit 1
