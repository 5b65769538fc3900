#!/bin/sh
# The Windows program makes a 20 GiB growable split disk under Wine; Linux's qemu-img must
# accept it: no errors, the full virtual size, eleven sparse pieces of at most 4,192,256 sectors.
# Usage: split-disk.sh WINE_RUN CLI_EXE SCRATCH
set -eu
wine_run=$1 cli=$2 scratch=$3
rm -rf "$scratch" && mkdir -p "$scratch"
folder=$("$wine_run" winepath -w "$scratch" 2>/dev/null | tr -d '\r')
fail() { printf 'FAIL: %s\n' "$*" >&2; exit 1; }

"$wine_run" "$cli" disk create "$folder\\Big Disk.vmdk" --size 20G --adapter lsilogic --type growable-split \
    >"$scratch/out.txt" 2>"$scratch/err.txt" || { cat "$scratch/err.txt" >&2; fail "disk create refused"; }
[ "$(tr -d '\r' <"$scratch/out.txt")" = "$folder\\Big Disk.vmdk" ] || fail "printed path: $(cat "$scratch/out.txt")"

pieces=$(ls "$scratch" | grep -c '^Big Disk-s0[0-9][0-9]\.vmdk$' || true)
[ "$pieces" = 11 ] || fail "expected 11 pieces Big Disk-s001.vmdk .. Big Disk-s011.vmdk, found $pieces: $(ls "$scratch")"
grep -q '^RW 4192256 SPARSE "Big Disk-s001.vmdk"' "$scratch/Big Disk.vmdk" || fail "first extent line: $(cat "$scratch/Big Disk.vmdk")"
grep -q '^RW 20480 SPARSE "Big Disk-s011.vmdk"' "$scratch/Big Disk.vmdk" || fail "last extent line: $(cat "$scratch/Big Disk.vmdk")"

qemu-img check "$scratch/Big Disk.vmdk" >"$scratch/check.txt" 2>&1 || { cat "$scratch/check.txt" >&2; fail "qemu-img check"; }
grep -q "No errors were found on the image." "$scratch/check.txt" || fail "qemu-img check said: $(cat "$scratch/check.txt")"
qemu-img info "$scratch/Big Disk.vmdk" | grep -q "virtual size: 20 GiB (21474836480 bytes)" ||
    fail "qemu-img info: $(qemu-img info "$scratch/Big Disk.vmdk")"
rm -rf "$scratch"
echo "20 GiB split disk made under Wine: qemu-img check found no errors"
