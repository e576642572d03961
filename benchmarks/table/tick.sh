# Ticks of playback.
# clipTicks DEPTH: a tick of 1000 and of 100 blocks, nanoseconds a curve, into ${large} and ${small}.
# Each pair is measured in one fresh process, one right after the other, because the machine is not
# equally quick all the time; of the pairs the one with the median ratio counts.
clipTicks() {
    local i
    : > "$work/clipTicks.txt"
    for ((i = 0; i < runs; ++i)); do
        "$bin/kv_bench_ladder" --benchmark_filter="^clipTick/blocks:(100|1000)/depth:$1\$" \
            --benchmark_min_time=0.2 --benchmark_format=csv 2> "$work/clipTicks.err" |
            awk -F, '/^"clipTick/ { split($1, part, /[:\/]/); each[part[3]] = $4 / part[3] / 10 }
                END { print each[1000] / each[100], each[1000], each[100] }' >> "$work/clipTicks.txt"
    done
    read -r _ large small < <(sort -g "$work/clipTicks.txt" |
        awk '{ line[NR] = $0 } END { print line[int((NR + 1) / 2)] }')
}

for depth in 1 2 4; do
    clipTicks "$depth"
    ratio "a tick of a clip of 1000 blocks, nested to depth $depth, a curve" "$large" "$small" 1.3 ns \
        "the same of 100 blocks"
done

# besidePeer HOW N: medians of a tick of N curves, here and in the peer's way HOW, taken in turns,
# into ${here} and ${there}; the latter is empty when the peer is not installed.
besidePeer() {
    local i
    : > "$work/here.txt"
    : > "$work/there.txt"
    for ((i = 0; i < runs; ++i)); do
        "$bin/kv_bench_scene_tick" curves "$2" >> "$work/here.txt"
        [[ ! -x $bin/kv_bench_peer_scene_tick ]] ||
            "$bin/kv_bench_peer_scene_tick" "$1" "$2" >> "$work/there.txt"
    done
    here=$(median < "$work/here.txt")
    there=$(median < "$work/there.txt")
}

sceneTick() { # MODE N: the median over fresh processes
    local i
    for ((i = 0; i < runs; ++i)); do "$bin/kv_bench_scene_tick" "$@"; done | median
}

declare -A eachCurve
for curves in 1000 10000 100000; do
    besidePeer stacked "$curves"
    eachCurve[$curves]=$here
    ratio "a tick of a clip of $((curves / 10)) blocks with 10 curves of 100 keys, written and read, a curve" \
        "$here" "$there" 1.0 ns "OpenSceneGraph's animation manager and stacked transforms"
done
note "With the keys of each curve at other frames than those beside it, so that no two curves share what is found about a frame: $(sceneTick staggered 1000) ns a curve at 1,000, $(sceneTick staggered 10000) ns at 10,000."
besidePeer callback 10000
note "A tick of 10,000 curves beside OpenSceneGraph with a callback that makes each matrix at once: $here ns a curve, there ${there:-not measured}."
ratio "a curve of the tick of 100,000" "${eachCurve[100000]}" "${eachCurve[1000]}" 2.5 ns "of 1,000"
note "A tick of 100,000 curves with GLIBC_TUNABLES=glibc.malloc.hugetlb=1, by which the C library asks for large pages: $(GLIBC_TUNABLES=glibc.malloc.hugetlb=1 sceneTick curves 100000) ns a curve."
ratio "tick 36,000 of a global playback" "$(sceneTick global 36000)" "$(sceneTick global 60)" 1.2 ns "tick 60"
figure "allocations of 100 warm ticks of a clip of 1000 blocks" "$(sceneTick allocations 10000)" 0 ""
