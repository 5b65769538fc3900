#!/bin/sh
# The `favorites` commands of the Windows program against the Wine registry, from a first run:
# the registry value "IniLocation" is made from the temporary folder (with its trailing "\"),
# the settings file ArdenForge.ini is written there (the path with its doubled "\" used as it
# is), and a list, a replacement and a removal are seen by the next run.
# Usage: favorites.sh WINE_RUN CLI_EXE
set -eu
wine_run=$1 cli=$2
key='HKCU\Software\Brackenware\Arden Forge'
fail() { printf 'FAIL: %s\n' "$*" >&2; exit 1; }
run() { "$wine_run" "$cli" "$@" | tr -d '\r'; }

"$wine_run" reg delete "$key" /f >/dev/null 2>&1 || true
temp=$("$wine_run" cmd /c 'echo %TEMP%' | tr -d '\r')
settings=$("$wine_run" winepath -u "$temp\\ArdenForge.ini" 2>/dev/null)
rm -f "$settings"

run favorites add "My VM" 'C:\VMs\My VM\My VM.vmx' 7 >/dev/null
location=$("$wine_run" reg query "$key" /v IniLocation | tr -d '\r' | sed -n 's/^ *IniLocation *REG_SZ *//p')
[ "$location" = "$temp\\" ] || fail "IniLocation is '$location', expected the temporary folder '$temp\\'"
[ -f "$settings" ] || fail "no settings file at $temp\\ArdenForge.ini"
tab=$(printf '\t')
grep -q "^Favorite0=My VM${tab}C:\\\\VMs\\\\My VM\\\\My VM.vmx${tab}7" "$settings" || fail "settings file: $(cat "$settings")"

run favorites add "Second" 'D:\Second\Second.vmx' >/dev/null
run favorites add "My VM" 'E:\Moved\My VM.vmx' 8 >/dev/null
expected="My VM${tab}E:\\Moved\\My VM.vmx${tab}8
Second${tab}D:\\Second\\Second.vmx${tab}8"
[ "$(run favorites list)" = "$expected" ] || fail "list after the replacement: $(run favorites list)"

run favorites remove "My VM" >/dev/null
[ "$(run favorites list)" = "Second${tab}D:\\Second\\Second.vmx${tab}8" ] || fail "list after the removal: $(run favorites list)"
grep -q "^Favorite0=Second${tab}" "$settings" || fail "the remaining favourite is not Favorite0: $(cat "$settings")"
grep -q "^Favorite1=" "$settings" && fail "a Favorite1 is left: $(cat "$settings")"

"$wine_run" reg delete "$key" /f >/dev/null 2>&1 || true
rm -f "$settings"
echo "favorites under Wine: IniLocation from the temporary folder, added, replaced, listed and removed"
