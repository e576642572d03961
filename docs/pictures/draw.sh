#!/usr/bin/env bash
# Draws the guide's pictures anew, with the programs of a build: docs/pictures/draw.sh [build/release]
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/../.."
bin=${1:-build/release}/bin
scene=$(mktemp --suffix=.osg)
trap 'rm -f "$scene"' EXIT
"$bin/handlePictures" "$scene"
for name in collapsed constant aimed smooth flat auto user lengthFixed lengthHalf lengthThird; do
    "$bin/kvanim" plot "$scene" --node "$name" -o "docs/pictures/$name.svg"
done
# Hundredths of a point are enough for the eye, and a third of the bytes.
sed -E -i 's/([0-9]+\.[0-9]{2})[0-9]+/\1/g' docs/pictures/*.svg
