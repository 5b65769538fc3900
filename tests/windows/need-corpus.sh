# Sourced by the corpus comparisons: without the corpus in $corpus they cannot run, so they are
# skipped with the reason (exit 77, their skip code), as the other corpus tests are, except in
# CI, where it fails.
if [ ! -d "$corpus/vmx" ]; then
    why="corpus of real files not found in '$corpus' (set ARDEN_CORPUS_DIR or put it in ../shared/corpus)"
    if [ "${CI:-}" = true ]; then echo "FAIL: cannot run in CI: $why" >&2; exit 1; fi
    echo "SKIP: $why" >&2
    exit 77
fi
