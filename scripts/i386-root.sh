#!/usr/bin/env bash
# Makes build/i386-root: the libraries that the benchmarks have as peers, and the benchmark library, as Debian builds them for
# i386. About 70 MB and six seconds; returns at once when it is there.
#
# The packages are unpacked, not installed: apt wants each in the version that this machine has for its own architecture, and
# the mirror need not have that one for i386.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/common.sh"

root=$repo/build/i386-root
[[ -d $root ]] && exit 0

"$repo/scripts/setup.sh" bench-i386

mkdir -p "$repo/build"
exec {lock}>"$root.lock"
flock "$lock"
[[ -d $root ]] && exit 0
# Under its name only when it is complete, so that an interrupted run starts again from nothing.
partial=$root.partial
rm -rf "$partial"

say "making the i386 root in $root"
state=$partial/apt
download_i386 "$state" i386 libbenchmark-dev libssl-dev nettle-dev libgcrypt20-dev libbotan-2-dev libcrypto++-dev \
    librhash-dev libgmp-dev ||
    die "the packages could not be downloaded; once the network and apt work, run scripts/i386-root.sh again"
for package in "$state"/archives/*.deb; do
    case ${package##*/} in
    # The compiler's own 32-bit C and C++ libraries are used.
    gcc-* | libc6* | libc-dev-bin* | libgcc* | libstdc++* | linux-libc-dev*) ;;
    *) dpkg-deb -x "$package" "$partial" ;;
    esac
done
rm -rf "$state" "$partial"/usr/share/{doc,man,locale}
mv -T "$partial" "$root"
