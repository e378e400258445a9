#!/usr/bin/env bash
# SPDX-License-Identifier: GPL-3.0-or-later
# An installation works from its new place: everything is found beside the binary. Usage: install_test.sh BUILD-FOLDER
set -euo pipefail

build=$1
place=$(mktemp -d)
trap 'rm -rf "$place"' EXIT
cmake --install "$build" --prefix "$place/first" >/dev/null
mv "$place/first" "$place/moved"  # nothing may remember where it was put
kelmo="$place/moved/bin/kelmo"
cmp <("$build/stage/bin/kelmo" list) <(cd / && "$kelmo" list) ||
    { echo "the catalogue is another one than in the build folder" >&2; exit 1; }
ffmpeg -v error -f lavfi -i testsrc2=size=64x36 -frames:v 1 "$place/in.png"
(cd / && "$kelmo" render -q -e Duotone -i "$place/in.png" -o "$place/out.png")
pixels() { ffmpeg -v error -i "$1" -f rawvideo -pix_fmt rgba -; }
[ "$(pixels "$place/out.png" | wc -c)" -eq $((64 * 36 * 4)) ] || { echo "no picture came out" >&2; exit 1; }
cmp -s <(pixels "$place/in.png") <(pixels "$place/out.png") && { echo "the picture did not change" >&2; exit 1; }
"$place/moved/bin/kelmo-mesh" --help >/dev/null
