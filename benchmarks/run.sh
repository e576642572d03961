#!/usr/bin/env bash
# Measures everything in one go, beside the peers, prints the table and writes docs/performance.md.
# With --check, ends with a failure when a figure misses its limit by more than a quarter.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bin=build/release/bin
work=build/bench
models=/usr/share/assimp/models/BVH
runs=5
check=false
[[ ${1:-} == --check ]] && check=true
mkdir -p "$work"
rows=$work/rows.md
failed=$work/failed
: > "$rows"
: > "$failed"

median() { sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# fresh WHAT ARGUMENT: the median over fresh processes.
fresh() {
    local i
    for ((i = 0; i < runs; ++i)); do "$bin/kv_bench_fresh" "$@"; done | median
}

# suite PROGRAM: all its benchmarks, medians of five repetitions, into build/bench/PROGRAM.txt as
# "name nanoseconds".
suite() {
    [[ -x $bin/$1 ]] || return 0
    echo "== $1" >&2
    "$bin/$1" --benchmark_repetitions="$runs" --benchmark_report_aggregates_only=true \
        --benchmark_min_time=0.1 --benchmark_format=csv 2> "$work/$1.err" |
        tr -d '"' | awk -F, '/_median/ { name = $1; sub(/_median$/, "", name)
            unit = $5 == "ms" ? 1e6 : $5 == "us" ? 1e3 : 1; print name, $3 * unit }' > "$work/$1.txt"
}

# of PROGRAM NAME: one figure of a suite, empty when it was not measured.
of() { [[ -f $work/$1.txt ]] && awk -v n="$2" '$1 == n { print $2 }' "$work/$1.txt"; }

# ratio TITLE OURS PEER LIMIT UNIT BESIDE: one row of the table.
ratio() {
    local title=$1 ours=$2 peer=$3 limit=$4 unit=$5 beside=$6
    if [[ -z $ours || -z $peer ]]; then
        printf '| %s | | | | not measured: %s is absent |\n' "$title" "$beside" | tee -a "$rows"
        return
    fi
    awk -v t="$title" -v o="$ours" -v p="$peer" -v l="$limit" -v u="$unit" -v b="$beside" -v f="$failed" '
        BEGIN { r = o / p
                printf "| %s | %.4g %s | %.4g %s | %.2f (at most %s) | %s |\n", t, o, u, p, u, r, l, b
                if (r > l * 1.25) print t >> f }' | tee -a "$rows"
}

suite kv_bench_ladder
suite kv_bench_peer_qt
suite kv_bench_peer_osg

echo "== the table"
ratio "one curve, 8 keys, playback order" "$(of kv_bench_ladder curve/keys:8/random:0)" \
    "$(of kv_bench_peer_qt easingCurve/keys:8/random:0)" 1.8 ns "Qt QEasingCurve"
ratio "one curve, 8 keys, random frames" "$(of kv_bench_ladder curve/keys:8/random:1)" \
    "$(of kv_bench_peer_qt easingCurve/keys:8/random:1)" 3 ns "Qt QEasingCurve"
ratio "one curve, 8192 keys, random frames" "$(of kv_bench_ladder curve/keys:8192/random:1)" \
    "$(of kv_bench_peer_osg sampler/keys:8192/random:1)" 2.5 ns "OpenSceneGraph cubic Bezier sampler"
ratio "a key inserted in ascending order, the 100,000th" "$(fresh insert 100000)" \
    "$(fresh insert 1000)" 2 ns "the 1,000th"
ratio "an identifier, of 300,000" "$(fresh ids 300000)" "$(fresh ids 1000)" 2 ns "of 1,000"
for depth in 1 2 4; do
    ratio "a tick of a clip of 1000 blocks, nested to depth $depth, a curve" \
        "$(of kv_bench_ladder "clipTick/blocks:1000/depth:$depth" | awk '{ print $1 / 10000 }')" \
        "$(of kv_bench_ladder "clipTick/blocks:100/depth:$depth" | awk '{ print $1 / 1000 }')" \
        1.3 ns "the same of 100 blocks"
done
# n log n: a block may cost log 4000 / log 1000, log 16000 / log 1000 times as much.
ratio "a block added to a clip, of 4,000" "$(fresh addBlock 4000)" "$(fresh addBlock 1000)" 1.2 ns "of 1,000"
ratio "a block added to a clip, of 16,000" "$(fresh addBlock 16000)" "$(fresh addBlock 1000)" 1.4 ns "of 1,000"
ratio "a clip exported, a block of 16,000" "$(fresh exportClip 16000)" "$(fresh exportClip 1000)" 2 ns "of 1,000"
ratio "a clip imported, a block of 16,000" "$(fresh importClip 16000)" "$(fresh importClip 1000)" 2 ns "of 1,000"
fresh ids 1000000 > "$work/ids-1M.txt"

if [[ -r $models/01_01.bvh ]]; then
    import() { # nanoseconds a key, the median over fresh processes
        local i keys start
        for ((i = 0; i < 3; ++i)); do
            start=$(date +%s%N)
            "$bin/kvanim" import "$models/$1" -o "$work/$1.osg" > "$work/$1.import.txt"
            keys=$(sed -n 's/.* \([0-9]*\) keys.*/\1/p' "$work/$1.import.txt" | head -n 1)
            echo $((($(date +%s%N) - start) / keys))
        done | median
    }
    ratio "import of 4511 frames, a key" "$(import 01_03.bvh)" "$(import 01_01.bvh)" 1.3 ns \
        "import of 2752 frames"
    scene=$work/01_01.bvh.osg
    ratio "reading the motion-capture scene" "$(fresh read "$scene")" "$(fresh getline "$scene")" 10 ms \
        "std::getline over the same file"
    ratio "writing the motion-capture scene" "$(fresh write "$scene")" "$(fresh fprintf "$scene")" 3 ms \
        "fprintf of the same numbers"
    if [[ -x /usr/bin/time ]]; then
        keys=$(sed -n 's/.* \([0-9]*\) keys.*/\1/p' "$work/01_01.bvh.import.txt" | head -n 1)
        /usr/bin/time -f %M -o "$work/peak.txt" "$bin/kvanim" info "$scene" > /dev/null
        ratio "peak memory of kvanim info, bytes a key" "$(awk -v k="$keys" '{ print $1 * 1024 / k }' "$work/peak.txt")" \
            1024 1 B "1 KB"
    fi
else
    echo "assimp-testmodels is not installed: nothing is said about motion-capture files"
fi

{
    echo "# Performance"
    echo
    echo "Written by \`./run bench\`; medians, ratios within one run. Machine: $(nproc) cores," \
        "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(c++ --version | head -n 1)."
    echo
    echo "| work | here | beside | ratio | beside what |"
    echo "|---|---|---|---|---|"
    cat "$rows"
    echo
    echo "## The ladder"
    echo
    echo "| step | ns |"
    echo "|---|---|"
    cat "$work"/kv_bench_*.txt | awk '{ printf "| %s | %.4g |\n", $1, $2 }'
    echo "| an identifier, of 1,000,000 | $(cat "$work/ids-1M.txt") |"
    [[ -s $work/kv_bench_peer_qt.err ]] && printf '\n%s.\n' "$(grep 'largest difference' "$work/kv_bench_peer_qt.err")"
} > docs/performance.md

if $check && [[ -s $failed ]]; then
    echo "missed by more than a quarter:" >&2
    cat "$failed" >&2
    exit 1
fi
