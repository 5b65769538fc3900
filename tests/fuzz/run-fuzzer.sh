#!/bin/sh
# Runs one fuzz target over its seed corpus.
#   run-fuzzer.sh FUZZER WORKDIR [-fresh] [libFuzzer options...]
# New inputs go to WORKDIR/<target>/corpus (the seeds in the tree are only read), crash
# reproducers to WORKDIR/<target>/crashes/. -fresh empties the work corpus first, so a run with
# a fixed -seed and -runs repeats exactly.
set -eu
fuzzer=$1
name=$(basename "$fuzzer")
work=$2/$name
shift 2
if [ "${1:-}" = "-fresh" ]; then
    rm -rf "$work/corpus"
    shift
fi
here=$(cd "$(dirname "$0")" && pwd)
seeds=$here/seeds/$name
mkdir -p "$work/corpus" "$work/crashes"
# A stack with every report of undefined behaviour, and the first report ends the run.
export UBSAN_OPTIONS="${UBSAN_OPTIONS:-print_stacktrace=1:halt_on_error=1}"
set -- -artifact_prefix="$work/crashes/" -timeout=25 -rss_limit_mb=2048 "$@"
if [ -f "$here/$name.dict" ]; then
    set -- -dict="$here/$name.dict" "$@"
fi
# The seeds are named in sorted order: libFuzzer takes a folder in the file system's order, so
# the same -seed would take another path on another machine.
list=$(LC_ALL=C ls "$seeds" | sed "s|^|$seeds/|" | paste -sd, -)
if ! "$fuzzer" "$@" -seed_inputs="$list" "$work/corpus"; then
    echo "$name: failed. The reproducer is in $work/crashes/; once the bug is fixed, copy it into" >&2
    echo "tests/fuzz/seeds/$name/ so that every later run tries it again." >&2
    exit 1
fi
