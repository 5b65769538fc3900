#!/bin/sh
# The Debian package checked as a real one, then installed, used and removed as a user would:
#   tests/package/installed-package.sh build/arden-forge_<version>_<arch>.deb
# lintian, desktop-file-validate and appstreamcli judge the package and its desktop files; the
# package is installed with apt-get, both programs are run from /usr/bin, the .vmx type, the
# manual page and the completion are looked up the way the desktop and the shell do, and after
# the package is purged nothing it installed is left. Needs root (or sudo).
set -eu

deb=$1
case $deb in /*) ;; *) deb=./$deb ;; esac  # apt-get installs a file only from a path
[ -f "$deb" ] || { echo "$deb: no such package (make package builds it)" >&2; exit 1; }
SUDO=""; [ "$(id -u)" -eq 0 ] || SUDO=sudo
package=arden-forge
vmx_type=application/x-vmware-vmx
work=$(mktemp -d)
installed=""
# A check that fails after the install leaves no package behind either.
trap 'rm -rf "$work"; [ -z "$installed" ] || DEBIAN_FRONTEND=noninteractive $SUDO apt-get purge -y -q $package >/dev/null' EXIT
fail() { echo "test-package: $*" >&2; exit 1; }
step() { echo "test-package: $*"; }

step "lintian $deb"
# --fail-on warning: a warning fails the test as an error does; overrides carry their reasons.
lintian --fail-on error,warning --info "$deb"

step "desktop entry, MIME type and AppStream metadata as packaged"
dpkg-deb -x "$deb" "$work/root"
desktop-file-validate "$work/root/usr/share/applications/$package.desktop"
appstreamcli validate --no-net --explain "$work/root/usr/share/metainfo/com.brackenware.ArdenForge.metainfo.xml"
for size in 16x16 22x22 24x24 32x32 48x48 64x64 128x128 256x256; do
    icon=$work/root/usr/share/icons/hicolor/$size/apps/$package.png
    file "$icon" | grep -q "PNG image data, $(echo $size | sed 's/x/ x /')," || fail "$icon is not a $size PNG"
done
[ -f "$work/root/usr/share/icons/hicolor/scalable/apps/$package.svg" ] || fail "no scalable icon"

step "apt-get install $deb"
DEBIAN_FRONTEND=noninteractive $SUDO apt-get install -y "$deb"
installed=yes
version=$(dpkg-query -W -f='${Version}' $package)
dpkg-query -W -f='${Recommends}\n' $package | grep -qw qemu-utils || fail "qemu-utils is not recommended"

step "the installed programs"
export HOME="$work/home" TMPDIR="$work/tmp" XDG_CONFIG_HOME="$work/home/.config" XDG_RUNTIME_DIR="$work/run"
mkdir -p "$HOME" "$TMPDIR" "$XDG_RUNTIME_DIR" "$work/vms"
chmod 700 "$XDG_RUNTIME_DIR"
[ "$(/usr/bin/arden-forge-cli --version)" = "arden-forge-cli (Arden Forge) $version" ] || fail "arden-forge-cli --version does not print $version"
[ "$(env -u DISPLAY /usr/bin/arden-forge --version)" = "arden-forge (Arden Forge) $version" ] || fail "arden-forge --version does not print $version"
[ "$(/usr/bin/arden-forge-cli new "$work/vms" "Installed Check")" = "$work/vms/Installed Check.vmx" ] || fail "arden-forge-cli new did not print the file it wrote"
/usr/bin/arden-forge-cli show "$work/vms/Installed Check.vmx" >"$work/show"
grep -q "Installed Check" "$work/show" || fail "arden-forge-cli show does not show the machine's name"
# The desktop program opens the machine in a tab and quits once its window is shown.
QT_QPA_PLATFORM=offscreen ARDEN_STARTUP_PROBE=1 timeout 60 /usr/bin/arden-forge "$work/vms/Installed Check.vmx" \
    || fail "the desktop program did not start and close (exit $?)"

step "the .vmx type, the manual pages and the completion"
[ "$(XDG_CURRENT_DESKTOP= xdg-mime query filetype "$work/vms/Installed Check.vmx")" = "$vmx_type" ] \
    || fail "xdg-mime does not name $vmx_type for a .vmx file"
[ "$(xdg-mime query default $vmx_type)" = "$package.desktop" ] || fail "$package.desktop does not open $vmx_type"
for page in arden-forge arden-forge-cli; do
    [ "$(man -w $page)" = "/usr/share/man/man1/$page.1.gz" ] || fail "man -w $page does not find its page"
done
bash -c '. /usr/share/bash-completion/bash_completion; _completion_loader arden-forge-cli; complete -p arden-forge-cli' \
    | grep -q "_arden_forge_cli" || fail "bash does not load the completion of arden-forge-cli"

step "apt-get purge $package"
dpkg -L $package >"$work/installed"
DEBIAN_FRONTEND=noninteractive $SUDO apt-get purge -y $package
installed=""
left=""
while IFS= read -r path; do
    [ -e "$path" ] || continue
    # A folder other packages have files in stays; anything else of the package must be gone.
    if [ -d "$path" ] && dpkg-query -S "$path" >/dev/null 2>&1; then continue; fi
    if [ -d "$path" ] && [ "$path" = "/." ]; then continue; fi
    left="$left $path"
done <"$work/installed"
[ -z "$left" ] || fail "left behind after purging:$left"
[ ! -e /usr/share/mime/application/x-vmware-vmx.xml ] || fail "the MIME database still holds $vmx_type"
step "passed"
