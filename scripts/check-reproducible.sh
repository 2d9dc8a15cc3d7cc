#!/usr/bin/env bash
# Builds the Windows libraries here and in a folder of another name, and compares the results byte by byte.
set -euo pipefail
source "${BASH_SOURCE[0]%/*}/common.sh"

work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
elsewhere=$work/a-folder-of-another-length

mkdir "$elsewhere"
source_files | tar -C "$repo" -cf - -T - | tar -C "$elsewhere" -xf -
readonly targets=(MorvaneCrypto MorvaneCryptoStatic MorvaneCommonStatic)
say "reproducible: building here"
configure_for_release windows-x86
build windows-x86 --target "${targets[@]}"
say "reproducible: building elsewhere"
quietly reproducible env -C "$elsewhere" bash -c '
    cmake --preset windows-x86 -DMORVANE_BUILD_TESTS=OFF -DMORVANE_BUILD_TOOLS=OFF &&
    cmake --build --preset windows-x86 --target "$@"' bash "${targets[@]}"

differ=0
cd "$elsewhere/build/windows-x86"
for file in bin/*.dll lib/*.a lib/*.lib; do
    if ! cmp -s "$file" "$repo/build/windows-x86/$file"; then
        say "not reproducible: $file"
        sha256sum "$file" "$repo/build/windows-x86/$file" >&2
        differ=1
    fi
done
[[ $differ -ne 0 ]] || say "reproducible: two builds, the same bytes"
exit $differ
