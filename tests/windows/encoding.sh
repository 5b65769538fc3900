#!/bin/sh
# The same edits of files in other encodings by the Linux program (iconv) and by the Windows
# program (the system's code-page functions, under Wine) must give the same bytes and the same
# exit code: a name and a note set in GBK, windows-1252, windows-1251, windows-949-2000 and
# Shift_JIS files, a character windows-1252 cannot hold refused without --yes and converted to
# UTF-8 with it, and `show` printing the name in UTF-8.
# Usage: encoding.sh LINUX_CLI WINE_RUN CLI_EXE CORPUS SCRATCH
set -eu
# The names below reach Wine as UTF-8 arguments.
export LC_ALL=C.UTF-8
linux_cli=$1 wine_run=$2 cli=$3 corpus=$4 scratch=$5
. "$(dirname "$0")/need-corpus.sh"
[ -x "$linux_cli" ] || { echo "FAIL: the Linux build's arden-forge-cli is needed (configure with -DARDEN_LINUX_CLI=PATH; make test-windows passes it)" >&2; exit 1; }
rm -rf "$scratch" && mkdir -p "$scratch/linux" "$scratch/windows"
win_scratch=$("$wine_run" winepath -w "$scratch/windows" 2>/dev/null | tr -d '\r')
failures=0 cases=0
fail() { printf 'FAIL: %s\n' "$*" >&2; failures=$((failures + 1)); }

# CASE FILE ENCODING (empty: the file's own) NAME NOTE [--yes]
edit() {
    case_name=$1 file=$2 encoding=$3 name=$4 note=$5
    shift 5
    cases=$((cases + 1))
    for side in linux windows; do
        if [ -n "$encoding" ]; then
            sed "s/^\.encoding = \"[^\"]*\"/.encoding = \"$encoding\"/" "$corpus/vmx/$file" >"$scratch/$side/$case_name.vmx"
        else
            cp "$corpus/vmx/$file" "$scratch/$side/$case_name.vmx"
        fi
    done
    linux_rc=0 windows_rc=0
    "$linux_cli" set "$scratch/linux/$case_name.vmx" --name "$name" --notes "$note" "$@" >/dev/null 2>&1 || linux_rc=$?
    "$wine_run" "$cli" set "$win_scratch\\$case_name.vmx" --name "$name" --notes "$note" "$@" >/dev/null 2>&1 ||
        windows_rc=$?
    [ "$linux_rc" = "$windows_rc" ] || fail "$case_name: exit code $linux_rc on Linux, $windows_rc on Windows"
    cmp -s "$scratch/linux/$case_name.vmx" "$scratch/windows/$case_name.vmx" ||
        fail "$case_name: the written files differ: $(cmp "$scratch/linux/$case_name.vmx" "$scratch/windows/$case_name.vmx")"
    shown=$("$wine_run" "$cli" show "$win_scratch\\$case_name.vmx" 2>/dev/null | tr -d '\r' | grep '^Display name: ' || true)
    expected_name=$name
    [ "$linux_rc" = 0 ] || expected_name=$(LC_ALL=C.UTF-8 "$linux_cli" show "$scratch/linux/$case_name.vmx" 2>/dev/null |
        grep '^Display name: ' | sed 's/^Display name: //')
    [ "$shown" = "Display name: $expected_name" ] || fail "$case_name: show printed '$shown'"
}

edit gbk vmwareubuntu2204__Ubuntu-64-bit.vmx GBK 'CentOS 7 64 位' '测试'
edit korean vmwareubuntu2204__Ubuntu-64-bit.vmx '' '실행 Ubuntu' '메모'
edit western win10vm__Windows-10-x64.vmx '' 'Müller €' 'Café'
edit cyrillic golovitskydd__Windows-10-x64.vmx '' 'Привет' 'Заметка'
edit japanese win7vmware17__Windows-7-x64.vmx '' '日本語' 'メモ'
edit refused win10vm__Windows-10-x64.vmx '' 'CentOS 7 64 位' 'Café'
edit converted win10vm__Windows-10-x64.vmx '' 'CentOS 7 64 位' 'Café' --yes
head -c 21 "$scratch/windows/converted.vmx" | grep -q '^\.encoding = "UTF-8"' ||
    fail "converted: the Windows program did not write .encoding = \"UTF-8\" first"
cmp -s "$corpus/vmx/win10vm__Windows-10-x64.vmx" "$scratch/windows/refused.vmx" ||
    fail "refused: the Windows program changed the file"

[ "$failures" = 0 ] || { echo "$failures of $cases encoding cases differ between the Linux and the Windows program" >&2; exit 1; }
rm -rf "$scratch"
echo "$cases encoding cases: the Linux and the Windows program write the same bytes"
