#!/bin/sh
# Every .vmx of the corpus re-saved by the Linux program and by the Windows program (under
# Wine) must give the same bytes and the same exit code; every .vmdk descriptor must be
# described the same by `disk info` (standard output, the Windows CR LF ends removed, and the
# "Disk Path" line left out: it is the folder as each system spells it).
# Usage: resave-corpus.sh LINUX_CLI WINE_RUN CLI_EXE CORPUS SCRATCH
set -eu
linux_cli=$1 wine_run=$2 cli=$3 corpus=$4 scratch=$5
. "$(dirname "$0")/need-corpus.sh"
[ -x "$linux_cli" ] || { echo "FAIL: the Linux build's arden-forge-cli is needed (configure with -DARDEN_LINUX_CLI=PATH; make test-windows passes it)" >&2; exit 1; }
rm -rf "$scratch" && mkdir -p "$scratch/linux" "$scratch/windows"
win_scratch=$("$wine_run" winepath -w "$scratch/windows" 2>/dev/null | tr -d '\r')
win_corpus=$("$wine_run" winepath -w "$corpus" 2>/dev/null | tr -d '\r')
failures=0 files=0
fail() { printf 'FAIL: %s\n' "$*" >&2; failures=$((failures + 1)); }

for file in "$corpus"/vmx/*.vmx; do
    name=$(basename "$file")
    files=$((files + 1))
    linux_rc=0 windows_rc=0
    "$linux_cli" resave "$file" --output "$scratch/linux/$name" --yes >/dev/null 2>&1 || linux_rc=$?
    "$wine_run" "$cli" resave "$win_corpus\\vmx\\$name" --output "$win_scratch\\$name" --yes >/dev/null 2>&1 ||
        windows_rc=$?
    [ "$linux_rc" = "$windows_rc" ] || fail "$name: exit code $linux_rc on Linux, $windows_rc on Windows"
    if [ -f "$scratch/linux/$name" ] || [ -f "$scratch/windows/$name" ]; then
        cmp -s "$scratch/linux/$name" "$scratch/windows/$name" ||
            fail "$name: the re-saved files differ: $(diff "$scratch/linux/$name" "$scratch/windows/$name" | head -5)"
    fi
done

for file in "$corpus"/vmdk/*.vmdk; do
    name=$(basename "$file")
    files=$((files + 1))
    "$linux_cli" disk info "$file" 2>/dev/null | grep -v '^Disk Path: ' >"$scratch/linux/$name.txt" || true
    "$wine_run" "$cli" disk info "$win_corpus\\vmdk\\$name" 2>/dev/null | tr -d '\r' | grep -v '^Disk Path: ' \
        >"$scratch/windows/$name.txt" || true
    cmp -s "$scratch/linux/$name.txt" "$scratch/windows/$name.txt" ||
        fail "$name: disk info differs: $(diff "$scratch/linux/$name.txt" "$scratch/windows/$name.txt" | head -5)"
done

[ "$failures" = 0 ] || { echo "$failures of $files corpus files differ between the Linux and the Windows program" >&2; exit 1; }
rm -rf "$scratch"
echo "$files corpus files: the Linux and the Windows program agree"
