#!/bin/sh
# count-results.sh [--failed N] file...: adds up JUnit files of ctest and prints "N passed, N failed". A test
# that could not run counts as failed, and so does a file that is not there. N failures besides are added.
set -eu
passed=0
failed=0
if [ "${1:-}" = --failed ]; then
    failed=$2
    shift 2
fi
for file in "$@"; do
    if [ ! -f "$file" ]; then
        failed=$((failed + 1))
        continue
    fi
    all=$(grep -c '<testcase ' "$file" || true)
    good=$(grep -c '<testcase .* status="run"' "$file" || true)
    left_out=$(grep -c '<testcase .* status="disabled"' "$file" || true)
    passed=$((passed + good))
    failed=$((failed + all - good - left_out))
done
echo "$passed passed, $failed failed"
