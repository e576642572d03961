#!/usr/bin/env bash
# The demo: real motion capture becomes curves on a scene, is saved, read back by another process,
# compared exactly in every file format, played in real time, drawn and checked. Ends with a table of what was verified.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

kvanim=build/release/bin/kvanim
out=demo
model=/usr/share/assimp/models/BVH/01_01.bvh
rate=120
joint=LeftUpLeg
mkdir -p "$out"

say() { printf '\n== %s\n' "$*"; }

# A small walk of its own, for machines without the motion-capture file.
write_small_model() {
    local frames=240 i
    {
        cat <<'BVH'
HIERARCHY
ROOT Hips
{
  OFFSET 0 0 0
  CHANNELS 6 Xposition Yposition Zposition Zrotation Yrotation Xrotation
  JOINT LeftUpLeg
  {
    OFFSET 1 -1 0
    CHANNELS 3 Zrotation Yrotation Xrotation
    End Site
    {
      OFFSET 0 -5 0
    }
  }
}
MOTION
BVH
        echo "Frames: $frames"
        echo "Frame Time: 0.0083333"
        awk -v n="$frames" 'BEGIN { for (i = 0; i < n; i++) { a = i * 0.05;
            printf "%.6f %.6f %.6f %.6f %.6f %.6f %.6f %.6f %.6f\n", i * 0.02, 10 + sin(a),
                   cos(a), 3 * sin(a), 2 * cos(a), sin(2 * a), 5 * cos(a), 4 * sin(a), 30 * sin(a) } }'
    } > "$1"
}

if [[ ! -r $model ]]; then
    say "assimp-testmodels is not installed; the demo builds a small scene of its own"
    model=$out/small.bvh
    write_small_model "$model"
fi

say "import $(basename "$model")"
"$kvanim" import "$model" --clip -o "$out/mocap.osg" --dump "$out/in-memory.txt" | tee "$out/import.txt"
clip=$(sed -n 's/.* --clip "\(.*\)" --fps .*/\1/p' "$out/import.txt")

say "what the saved scene holds"
"$kvanim" info "$out/mocap.osg" > "$out/info.txt"
head -n 12 "$out/info.txt"
echo "... ($(wc -l < "$out/info.txt") lines in $out/info.txt)"

say "read back in a second process, compared record by record and matrix by matrix"
"$kvanim" dump "$out/mocap.osg" -o "$out/read-back.txt"
cmp "$out/in-memory.txt" "$out/read-back.txt"
keys=$(grep -c '^ *key ' "$out/read-back.txt")
curves=$(grep -c '^ *curve ' "$out/read-back.txt")
blocks=$(grep -c '^ *block ' "$out/read-back.txt")
matrices=$(grep -c '^  world ' "$out/read-back.txt")
frames=$(grep -c '^frame ' "$out/read-back.txt")
moving=$(awk '/^  world /{ if (($2 in seen) && seen[$2] != $0) moved[$2] = 1; seen[$2] = $0 }
              END { n = 0; for (m in moved) n++; print n }' "$out/read-back.txt")
echo "equal: $blocks blocks, $curves curves, $keys keys, $matrices world matrices at $frames frames"

say "the same in OpenSG's binary format, and compressed"
# seconds FILE COMMAND...: what the command takes, its output into FILE.
seconds() {
    local into=$1 start
    shift
    start=$(date +%s%N)
    "$@" > "$into"
    awk -v n=$(($(date +%s%N) - start)) 'BEGIN { printf "%.2f", n / 1e9 }'
}
formats=$out/formats.txt
printf '  %-12s %10s %12s %12s\n' format bytes "import, s" "read back, s" > "$formats"
for format in osg osb osg.gz osb.gz; do
    written=$(seconds "$out/import-again.txt" "$kvanim" import "$model" --clip -o "$out/format.$format")
    read_back=$(seconds "$out/format.txt" "$kvanim" dump "$out/format.$format")
    cmp "$out/in-memory.txt" "$out/format.txt"
    printf '  %-12s %10s %12s %12s\n' ".$format" "$(stat -c %s "$out/format.$format")" \
        "$written" "$read_back" >> "$formats"
done
rm "$out"/format.* "$out/import-again.txt"
cat "$formats"
echo "equal: every record and matrix, in all four"

say "play the clip \"$clip\" for three seconds in real time at $rate frames a second"
"$kvanim" play "$out/mocap.osg" --clip "$clip" --fps "$rate" --seconds 3 | tee "$out/play.txt"
if [[ $moving == 0 ]]; then
    echo "the world matrices never changed" >&2
    exit 1
fi

say "the curves of $joint"
"$kvanim" plot "$out/mocap.osg" --node "$joint" -o "$out/curves.png"
"$kvanim" plot "$out/mocap.osg" --node "$joint" -o "$out/curves.svg"

say "the clip: its tracks, and the blocks that lie on them"
"$kvanim" plot "$out/mocap.osg" --clip "$clip" -o "$out/clip.png"
"$kvanim" plot "$out/mocap.osg" --clip "$clip" -o "$out/clip.svg"

say "check: the imported scene is sound"
"$kvanim" check "$out/mocap.osg" | tee "$out/check.txt"

say "check: the same scene, broken on purpose"
# Each line touches the first place that it fits.
sed -E \
    -e '0,/ ControlPoint 0 /s// ControlPoint -2 /' \
    -e '0,/ OutTangent 0\.5 /s// OutTangent -1 /' \
    -e '0,/ InTangent 0\.5 /s// InTangent 0 /' \
    -e '0,/ ControlPoint 5 /s// ControlPoint 3.5 /' \
    -e '0,/ ControlPoint 9 .*/s// ControlPoint 9 nan/' \
    -e '0,/ ControlPoint 12 /s// ControlPoint 11 /' \
    -e '0,/AFValuePosition 2/s//AFValuePosition 1/' \
    -e '0,/AFGlobalFieldName "scale"/s//AFGlobalFieldName "nowhere"/' \
    "$out/mocap.osg" > "$out/broken.osg"
code=0
"$kvanim" check "$out/broken.osg" > "$out/broken.txt" || code=$?
cat "$out/broken.txt"
if [[ $code != 3 ]]; then
    echo "check ended with $code on a broken scene, not with 3" >&2
    exit 1
fi
for kind in no-value time-backwards unsorted-frames equal-frames not-finite same-scalar field-gone; do
    if ! grep -q "^$kind: " "$out/broken.txt"; then
        echo "check found no $kind in the broken scene" >&2
        exit 1
    fi
done

say "verified"
row() { printf '  %-52s %s\n' "$1" "$2"; }
row "records equal after save and load" "$blocks blocks, $curves curves, $keys keys"
row "world matrices equal to the bit" "$matrices ($frames frames)"
row "nodes whose world matrix changes over the frames" "$moving"
row "largest deviation from the source, any channel" \
    "$(awk '/^  [a-z]+[XYZ] /{ if ($2 + 0 > m) m = $2 + 0 } END { print m }' "$out/import.txt")"
row "playback" "$(tail -n 1 "$out/play.txt")"
row "check of the imported scene" "$(tail -n 1 "$out/check.txt")"
row "check of the broken scene" "$(tail -n 1 "$out/broken.txt"), exit code 3 as it must be"
row "pictures of the curves" "$out/curves.png $out/curves.svg"
row "pictures of the clip" "$out/clip.png $out/clip.svg"
printf '\n'
cat "$formats"
