#!/bin/sh
# Each deliberate fault in the lists must still find its text in the source: the fault check
# skips a fault whose text is gone, so a list left behind by a change in the code would quietly
# guard less. While the fault check has a fault in place, the file holds the faulty text instead;
# that passes too, so this test does not itself catch the faults.
# Usage: faults-apply.sh PROJECT_ROOT LIST...
root=$1
shift
missing=$(for list in "$@"; do
    awk -F ' \\|\\|\\| ' 'NF == 3 && $0 !~ /^#/ { print FNR "\t" $1 "\t" $2 "\t" $3 }' "$list" |
    while IFS="$(printf '\t')" read -r line path text faulty; do
        grep -qF -- "$text" "$root/$path" 2>/dev/null ||
            { [ -n "$faulty" ] && grep -qF -- "$faulty" "$root/$path" 2>/dev/null; } ||
            echo "$list:$line: the text of this fault is no longer in $path: $text"
    done
done)
[ -z "$missing" ] && exit 0
echo "$missing"
exit 1
