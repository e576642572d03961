# Ticks of playback.
for depth in 1 2 4; do
    ratio "a tick of a clip of 1000 blocks, nested to depth $depth, a curve" \
        "$(of kv_bench_ladder "clipTick/blocks:1000/depth:$depth" | awk '{ print $1 / 10000 }')" \
        "$(of kv_bench_ladder "clipTick/blocks:100/depth:$depth" | awk '{ print $1 / 1000 }')" \
        1.3 ns "the same of 100 blocks"
done
