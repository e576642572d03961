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

# besidePeer HOW N...: ticks of each number of curves, here and in the peer's way HOW, all taken in
# turns, because the machine is not equally quick all the time; the medians into here[N] and
# there[N]. The latter is empty when the peer is not installed.
declare -A here there
besidePeer() {
    local how=$1 i n
    shift
    rm -f "$work"/here.*.txt "$work"/there.*.txt
    for ((i = 0; i < runs; ++i)); do
        for n in "$@"; do
            "$bin/kv_bench_scene_tick" curves "$n" >> "$work/here.$n.txt"
            [[ ! -x $bin/kv_bench_peer_scene_tick ]] ||
                "$bin/kv_bench_peer_scene_tick" "$how" "$n" >> "$work/there.$n.txt"
        done
    done
    for n in "$@"; do
        here[$n]=$(median < "$work/here.$n.txt")
        there[$n]=
        [[ ! -f $work/there.$n.txt ]] || there[$n]=$(median < "$work/there.$n.txt")
    done
}

sceneTick() { # MODE N: the median over fresh processes
    local i
    for ((i = 0; i < runs; ++i)); do "$bin/kv_bench_scene_tick" "$@"; done | median
}

besidePeer stacked 1000 10000 100000
for curves in 1000 10000 100000; do
    ratio "a tick of a clip of $((curves / 10)) blocks with 10 curves of 100 keys, written and read, a curve" \
        "${here[$curves]}" "${there[$curves]}" 1.0 ns "OpenSceneGraph's animation manager and stacked transforms"
done
ratio "a curve of the tick of 100,000" "${here[100000]}" "${here[1000]}" 2.5 ns "of 1,000"
note "With the keys of each curve at other frames than those beside it, so that no two curves share what is found about a frame: $(sceneTick staggered 1000) ns a curve at 1,000, $(sceneTick staggered 10000) ns at 10,000."
note "While a key is dragged, so that every tick looks at every curve again: $(sceneTick edited 1000) ns a curve at 1,000, $(sceneTick edited 10000) ns at 10,000."
besidePeer callback 10000
note "A tick of 10,000 curves beside OpenSceneGraph with a callback that makes each matrix at once: ${here[10000]} ns a curve, there ${there[10000]:-not measured}."
note "A tick of 100,000 curves with GLIBC_TUNABLES=glibc.malloc.hugetlb=1, by which the C library asks for large pages: $(GLIBC_TUNABLES=glibc.malloc.hugetlb=1 sceneTick curves 100000) ns a curve."
ratio "tick 36,000 of a global playback" "$(sceneTick global 36000)" "$(sceneTick global 60)" 1.2 ns "tick 60"
figure "allocations of 100 warm ticks of a clip of 1000 blocks" "$(sceneTick allocations 10000)" 0 ""
