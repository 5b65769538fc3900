#!/bin/sh
# A corpus comparison of the Windows build, run where there is no corpus: it must skip with
# its reason (exit 77) outside CI and fail in CI, before it looks for Wine or the programs.
# Usage: corpus-skip-check.sh RESAVE_CORPUS_SCRIPT SCRATCH
set -u
script=$1 scratch=$2
rm -rf "$scratch" && mkdir -p "$scratch"
missing="$scratch/no-corpus"
rc=0
env -u CI sh "$script" /nowhere/cli /nowhere/wine-run /nowhere/cli.exe "$missing" "$scratch/out" 2>"$scratch/err" || rc=$?
[ "$rc" = 77 ] || { echo "FAIL: exit $rc without a corpus, not the skip code 77" >&2; cat "$scratch/err" >&2; exit 1; }
grep -q "^SKIP: corpus of real files not found in '$missing' (set ARDEN_CORPUS_DIR or put it in ../shared/corpus)$" "$scratch/err" ||
    { echo "FAIL: the skip does not say why:" >&2; cat "$scratch/err" >&2; exit 1; }
rc=0
CI=true sh "$script" /nowhere/cli /nowhere/wine-run /nowhere/cli.exe "$missing" "$scratch/out" 2>"$scratch/err" || rc=$?
[ "$rc" = 1 ] && grep -q '^FAIL: cannot run in CI: corpus of real files not found' "$scratch/err" ||
    { echo "FAIL: in CI a missing corpus must fail (exit $rc)" >&2; cat "$scratch/err" >&2; exit 1; }
echo "the corpus comparison skips with its reason without a corpus, and fails in CI"
