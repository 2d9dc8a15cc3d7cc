#!/usr/bin/env bash
# Installs the Debian packages that a task needs: scripts/setup.sh GROUP...
# Asks for nothing and touches nothing when all of them are there.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/common.sh"

declare -A packages=(
    [build]="g++ cmake ninja-build python3 libcli11-dev nlohmann-json3-dev util-linux"
    [test]="googletest pkg-config openssl libssl-dev libgcrypt20-dev libcrypto++-dev libgmp-dev g++-multilib libc6-dev-i386
        g++-mingw-w64-i686-posix binutils-mingw-w64-i686 mingw-w64-i686-dev clang lld"
    [package]="dpkg-dev file pkg-config"
    [abi]="abigail-tools g++-multilib libc6-dev-i386"
    [docs]="doxygen"
    [wine]="libc6-i386 debian-archive-keyring"
    [fuzz]="clang libclang-rt-dev"
    [coverage]="gcovr"
    [secrets]="valgrind debian-archive-keyring"
    [lint]="clang-format clang-tidy shellcheck git"
    [bench]="pkg-config libbenchmark-dev libssl-dev nettle-dev libgcrypt20-dev libbotan-2-dev libcrypto++-dev librhash-dev
        libgmp-dev"
    [bench-i386]="pkg-config g++-multilib libc6-dev-i386 debian-archive-keyring"
)

wanted=()
for group in "$@"; do
    [[ -n ${packages[$group]-} ]] || die "no such group: $group (there are: ${!packages[*]})"
    read -r -d '' -a names <<<"${packages[$group]}" || true
    wanted+=("${names[@]}")
done
[[ ${#wanted[@]} -gt 0 ]] || die "usage: scripts/setup.sh GROUP... (groups: ${!packages[*]})"

if ! command -v dpkg-query >/dev/null || ! command -v apt-get >/dev/null; then
    die "this machine has no apt-get. Install what these Debian packages hold by other means and call cmake yourself" \
        "(cmake --preset linux-x64 && cmake --build --preset linux-x64): ${wanted[*]}"
fi

installed=$(dpkg-query -W -f '${Package} ${db:Status-Status}\n' "${wanted[@]}" 2>/dev/null || true)
missing=()
for package in "${wanted[@]}"; do
    grep -qxF "$package installed" <<<"$installed" || missing+=("$package")
done
[[ ${#missing[@]} -gt 0 ]] || exit 0

by_hand="apt-get update && apt-get install -y --no-install-recommends ${missing[*]}"
can_be_root || die "packages are missing and neither root nor sudo is at hand. As root, run: $by_hand"

say "installing: ${missing[*]}"
apt() { as_root env DEBIAN_FRONTEND=noninteractive apt-get -q -o DPkg::Lock::Timeout=120 "$@"; }
# One unreachable source among several need not matter; the installation tells.
quietly apt-update apt update || say "apt-get update failed; trying with the package lists at hand"
quietly apt-install apt install -y --no-install-recommends "${missing[@]}" ||
    die "these packages could not be installed: ${missing[*]}. Once the network and apt work, run as root: $by_hand"
