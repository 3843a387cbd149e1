#!/bin/sh
# check.sh CMAKE BUILD PAGES MADE: builds the documentation without a warning and its examples, runs those that are
# programs, and fails on a picture that no page shows, and where comments or pictures did not reach the HTML.
set -u
cmake=$1 build=$2 pages=$3 made=$4
broken=0

complain() {
    echo "$1" >&2
    broken=1
}

"$cmake" --build "$build" --target docs docs_examples || exit 1

for program in "$made"/examples/programs/*; do
    timeout 20 "$program" >"$made/program.log" 2>&1 && ! [ -s "$made/program.log" ] ||
        complain "$program fails: $(cat "$made/program.log")"
done

# Doxygen says nothing of a picture that is not there.
for name in $(grep -oh ']([^)]*\.png)' "$pages"/items/*.md | tr -d '()]'); do
    [ -s "$made/specimens/$name" ] || complain "$name is on a page, but there is none"
done
for picture in "$made"/specimens/*.png; do
    name=${picture##*/}
    grep -q "]($name)" "$pages"/items/*.md || complain "$name is shown on no page"
    [ -s "$made/html/$name" ] || complain "$name is not beside the HTML"
    grep -ql "img src=\"$name\"" "$made"/html/*.html || complain "$name is not in the HTML"
done

# A comment before a declaration, one for several, one behind a declaration, and one of a file.
while IFS=: read -r page text; do
    grep -q "$text" "$made/html/$page" || complain "\"$text\" is not in $page"
done <<END
classQKButton.html:Forgets the picture without freeing it
classQKCheckBox.html:Shift the text, in pixels
structHeadless_1_1Picture.html:premultiplied, top-down
check__box_8h.html:a mark over it while checked
END
count=$(grep -c 'Shift the text, in pixels' "$made/html/classQKCheckBox.html")
[ "$count" -ge 4 ] || complain "a comment for four functions stands at $count"

exit "$broken"
