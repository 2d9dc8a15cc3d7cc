#!/usr/bin/env bash
# Builds the Windows libraries twice, in folders of different names, and compares the results byte by byte.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
places=("$work/first" "$work/second-of-another-length")

for place in "${places[@]}"; do
    mkdir "$place"
    source_files | tar -C "$repo" -cf - -T - | tar -C "$place" -xf -
    say "reproducible: building in ${place##*/}"
    quietly "reproducible-${place##*/}" env -C "$place" bash -c '
        cmake --preset windows-x86 -DMORVANE_BUILD_TESTS=OFF -DMORVANE_BUILD_TOOLS=OFF &&
        cmake --build --preset windows-x86 --target MorvaneCrypto MorvaneCryptoStatic MorvaneCommonStatic'
done

differ=0
cd "${places[0]}/build/windows-x86"
for file in bin/*.dll lib/*.a lib/*.lib; do
    if ! cmp -s "$file" "${places[1]}/build/windows-x86/$file"; then
        say "not reproducible: $file"
        (cd "$work" && sha256sum ./*/build/windows-x86/"$file") >&2
        differ=1
    fi
done
[[ $differ -ne 0 ]] || say "reproducible: two builds, the same bytes"
exit $differ
