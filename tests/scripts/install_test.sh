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
count=$(cd / && "$kelmo" list --json | grep -c '"guid"')
[ "$count" -ge 26 ] || { echo "only $count effects listed" >&2; exit 1; }
ffmpeg -v error -f lavfi -i testsrc2=size=64x36 -frames:v 1 "$place/in.png"
(cd / && "$kelmo" render -q -e Duotone -i "$place/in.png" -o "$place/out.png")
cmp -s "$place/in.png" "$place/out.png" && { echo "the picture did not change" >&2; exit 1; }
[ -s "$place/out.png" ]
[ ! -x "$build/stage/bin/kelmo-mesh" ] || "$place/moved/bin/kelmo-mesh" --help >/dev/null
