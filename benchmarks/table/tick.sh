# Ticks of playback.

# clipTick BLOCKS DEPTH: a tick of a clip, nanoseconds a curve.
clipTick() {
    once kv_bench_ladder "clipTick/blocks:$1/depth:$2" | awk -v n="$1" '{ print $1 / n / 10 }'
}

for depth in 1 2 4; do
    ratioOf "a tick of a clip of 1000 blocks, nested to depth $depth, a curve" \
        "clipTick 1000 $depth" "clipTick 100 $depth" 1.3 ns "the same of 100 blocks"
done

sceneTick() { "$bin/kv_bench_scene_tick" "$@"; }
peerTick() { [[ ! -x $bin/kv_bench_peer_scene_tick ]] || "$bin/kv_bench_peer_scene_tick" "$@"; }

for curves in 1000 10000 100000; do
    ratioOf "a tick of a clip of $((curves / 10)) blocks with 10 curves of 100 keys, written and read, a curve" \
        "sceneTick curves $curves" "peerTick stacked $curves" 1.0 ns \
        "OpenSceneGraph's animation manager and stacked transforms"
done
ratioOf "a curve of the tick of 100,000" "sceneTick curves 100000" "sceneTick curves 1000" 2.5 ns \
    "of 1,000"
note "With the keys of each curve at other frames than those beside it, so that no two curves share what is found about a frame: $(medianOf sceneTick staggered 1000) ns a curve at 1,000, $(medianOf sceneTick staggered 10000) ns at 10,000."
note "While a key is dragged, so that every tick looks at every curve again: $(medianOf sceneTick edited 1000) ns a curve at 1,000, $(medianOf sceneTick edited 10000) ns at 10,000."
note "A tick of 10,000 curves beside OpenSceneGraph with a callback that makes each matrix at once: $(medianOf sceneTick curves 10000) ns a curve, there $(medianOf peerTick callback 10000)."
note "A tick of 100,000 curves with GLIBC_TUNABLES=glibc.malloc.hugetlb=1, by which the C library asks for large pages: $(GLIBC_TUNABLES=glibc.malloc.hugetlb=1 medianOf sceneTick curves 100000) ns a curve."
# Short ones, so that many make a median.
runs=25 ratioOf "tick 36,000 of a global playback" "sceneTick global 36000" "sceneTick global 60" 1.2 ns "tick 60"
figure "allocations of 100 warm ticks of a clip of 1000 blocks" "$(sceneTick allocations 10000)" 0 ""
