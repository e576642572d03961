#!/usr/bin/env bash
# Exchanges scenes between two builds of kvanim: written by A and read by B, written by B and read by A,
# in both formats, compared with what the writer had in memory. Prints a table; fails when a loss is not
# the one that expected.txt states, or an expected one does not occur.
#
# usage: exchange.sh KVANIM_A KVANIM_B [FOLDER]     beside each kvanim lies kv_exchange_scenes
set -uo pipefail
here=$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)
a=${1:?usage: exchange.sh KVANIM_A KVANIM_B [FOLDER]}
b=${2:?usage: exchange.sh KVANIM_A KVANIM_B [FOLDER]}
folder=${3:-$(mktemp -d)}
model=${KV_EXCHANGE_MODEL:-/usr/share/assimp/models/BVH/01_01.bvh}
mkdir -p "$folder"

scenes_of() { echo "$(dirname "$1")/kv_exchange_scenes"; }
for program in "$a" "$b" "$(scenes_of "$a")" "$(scenes_of "$b")"; do
    [[ -x $program ]] || { echo "exchange: $program is missing" >&2; exit 2; }
done
export LSAN_OPTIONS=suppressions=$here/../support/leaksOfOthers.txt:print_suppressions=0

# write KVANIM FOLDER: every scene in both formats, with what it holds.
write() {
    mkdir -p "$2"
    "$(scenes_of "$1")" write "$2" > "$2/scenes" || { echo "exchange: $1 writes no scenes" >&2; exit 2; }
    [[ -r $model ]] || return 0
    for format in osg osb; do
        "$1" import "$model" -o "$2/mocap.$format" --dump "$2/mocap.dump" > "$2/mocap.log" ||
            { cat "$2/mocap.log" >&2; exit 2; }
    done
    echo mocap >> "$2/scenes"
}

# losses WRITER READER FOLDER SCENE FORMAT: what the reader misses of what the writer had.
losses() {
    local file=$3/$4.$5 found=()
    "$2" dump "$file" -o "$file.read" 2> "$file.log" || { echo unreadable; return; }
    if [[ $4 == mocap ]]; then
        found+=("$("$(scenes_of "$2")" compare "$3/mocap.dump" "$file.read")")
    else
        "$2" dump --containers "$file" -o "$file.containers" 2>> "$file.log" ||
            { echo unreadable; return; }
        found+=("$("$(scenes_of "$2")" compare "$3/$4.txt" "$file.containers")")
        # And what the library makes of the records, which the writer may not be able to read itself.
        if "$1" dump "$file" -o "$file.own" 2>> "$file.log"; then
            found+=("$("$(scenes_of "$2")" compare "$file.own" "$file.read")")
        fi
    fi
    printf '%s\n' "${found[@]}" | tr , '\n' | sort -u | grep -vx none | paste -sd , | grep . || echo none
}

# expected SCENE FORMAT WRITER READER: the loss that expected.txt states; none without a line.
expected() {
    awk -v scene="$1" -v format="$2" -v writer="$3" -v reader="$4" '
        /^#/ || NF < 5 { next }
        $1 == scene && ($2 == format || $2 == "*") && ($3 == writer || $3 == "*") &&
            ($4 == reader || $4 == "*") { print $5; found = 1; exit }
        END { if (!found) print "none" }' "$here/expected.txt"
}

write "$a" "$folder/a"
write "$b" "$folder/b"
if [[ ! -r $model ]]; then
    echo "exchange: SKIPPED the motion-capture scene: $model is not there (package assimp-testmodels)"
fi
graph_a=$("$(scenes_of "$a")" graph)
graph_b=$("$(scenes_of "$b")" graph)
echo "A: $graph_a scene graph; B: $graph_b scene graph"
printf '%-16s %-6s %-28s %-28s %s\n' scene format 'A to B' 'B to A' differences
wrong=0
while read -r scene; do
    for format in osg osb; do
        there=$(losses "$a" "$b" "$folder/a" "$scene" "$format")
        back=$(losses "$b" "$a" "$folder/b" "$scene" "$format")
        verdict=
        stated=$(expected "$scene" "$format" "$graph_a" "$graph_b")
        [[ $there == "$stated" ]] || verdict="A to B: expected $stated"
        stated=$(expected "$scene" "$format" "$graph_b" "$graph_a")
        [[ $back == "$stated" ]] || verdict="${verdict:+$verdict; }B to A: expected $stated"
        if [[ -n $verdict ]]; then
            wrong=$((wrong + 1))
        elif [[ $there == none && $back == none ]]; then
            verdict=none
        else
            verdict='as expected'
        fi
        printf '%-16s %-6s %-28s %-28s %s\n' "$scene" "$format" "$there" "$back" "$verdict"
    done
done < "$folder/a/scenes"
if [[ $wrong -gt 0 ]]; then
    echo "exchange: $wrong of the lines above are not as expected" >&2
    exit 1
fi
