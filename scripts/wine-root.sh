#!/usr/bin/env bash
# Makes the folder from which 32-bit Wine runs: Debian's wine32 for i386, the libraries it needs, and a Wine prefix that
# is ready. Place: build/wine-root, or $MORVANE_WINE_ROOT. About 1.2 GB and half a minute; returns at once when it is there.
#
# The packages are unpacked, not installed: that needs neither root nor i386 as a foreign architecture of this machine.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/common.sh"

root=$(realpath -m "${MORVANE_WINE_ROOT:-$repo/build/wine-root}")
complete() { [[ -x $root/usr/lib/wine/wine && -e $root/prefix/system.reg ]]; }
if complete; then exit 0; fi

"$repo/scripts/setup.sh" wine
mkdir -p "${root%/*}"
exec {lock}>"$root.lock"
flock "$lock"
if complete; then exit 0; fi
# Under its name only when it is complete, so that an interrupted run starts again from nothing.
partial=$root.partial
rm -rf "$partial"

say "making the Wine root in $root (about half a minute)"
state=$partial/apt
download_i386 "$state" wine wine32 ||
    die "Wine's packages could not be downloaded; once the network and apt work, run scripts/wine-root.sh again"
for package in "$state"/archives/*.deb; do
    dpkg-deb -x "$package" "$partial"
done
dlls=$partial/usr/lib/i386-linux-gnu/wine
rm -rf "$state" "$dlls/x86_64-windows" "$partial"/usr/share/{doc,man,locale}
# Fontconfig complains on standard error where it finds no configuration.
printf '<fontconfig/>\n' >"$partial/fonts.conf"
# Two things are otherwise than unpacking leaves them. The server is started by a script that knows /usr only. And zlib, a
# plain Windows library of another package, is loaded once it bears the mark of Wine's own; installing would write that.
ln -sf wineserver32 "$partial/usr/lib/wine/wineserver"
zlib=$dlls/i386-windows/zlib1.dll
cp "$partial/usr/i686-w64-mingw32/lib/zlib1.dll" "$zlib"
{ printf 'Wine builtin DLL' && head -c 16 /dev/zero; } | dd of="$zlib" bs=1 seek=64 conv=notrunc status=none

export MORVANE_WINE_ROOT=$partial
started=yes
quietly wine-prefix timeout 120 "$repo/scripts/wine-run.sh" wineboot --init || started=
"$repo/scripts/wine-run.sh" --stop
[[ -n $started ]] || die "Wine does not start"
mv -T "$partial" "$root" || die "$root is in the way: remove it, or name another place in MORVANE_WINE_ROOT"
