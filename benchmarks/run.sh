#!/usr/bin/env bash
# Measures everything in one go, beside the peers, prints the table and writes docs/performance.md.
# With --check, ends with a failure when a ratio misses its limit by more than a quarter, a count
# its limit at all, or a growth exponent is above 1.1. The rows stand in table/, by topic.
set -euo pipefail
cd "$(dirname "${BASH_SOURCE[0]}")/.."

bin=build/release/bin
work=build/bench
models=/usr/share/assimp/models/BVH
runs=${KV_BENCH_RUNS:-5} # of each measurement; fewer than 3 leave the suites without a median
check=false
case ${1:-} in
    --check) check=true ;;
    '') ;;
    *) echo "usage: benchmarks/run.sh [--check]" >&2; exit 2 ;;
esac
mkdir -p "$work"
rm -f "$work"/*.txt
rows=$work/rows.md
failed=$work/failed
: > "$rows"
: > "$failed"

# shellcheck source=benchmarks/measure.sh
source benchmarks/measure.sh

suite kv_bench_ladder
suite kv_bench_peer_qt
suite kv_bench_peer_osg

echo "| work | here | beside | ratio | beside what |"
for topic in evaluation tick keys loading clips motionCapture; do
    # shellcheck disable=SC1090
    source "benchmarks/table/$topic.sh"
done

{
    echo "# Performance"
    echo
    echo "Written by \`./run bench\`. What is compared was measured in turns; of $runs pairs or more the one with"
    echo "the median ratio is told. Machine: $(nproc) cores,"
    echo "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1), $(c++ --version | head -n 1)."
    echo
    echo "Rows about thousands of curves live in the third-level cache: where other machines share it, they"
    echo "vary from run to run, in either direction."
    echo
    echo "| work | here | beside | ratio | beside what |"
    echo "|---|---|---|---|---|"
    cat "$rows"
    echo
    echo "## The ladder"
    echo
    echo "| step | ns |"
    echo "|---|---|"
    for program in kv_bench_ladder kv_bench_peer_qt kv_bench_peer_osg; do
        awk -v p="$program" '!/#/ { printf "| %s %s | %.4g |\n", p, $1, $2 }' "$work/$program.txt"
    done
    if [[ -s $work/notes.txt ]]; then
        echo
        cat "$work/notes.txt"
    fi
} > "$work/performance.md"
mv "$work/performance.md" docs/performance.md
echo "== written: docs/performance.md"

if $check && [[ -s $failed ]]; then
    echo "missed:" >&2
    cat "$failed" >&2
    exit 1
fi
