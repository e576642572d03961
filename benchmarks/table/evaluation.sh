# One curve, beside the peers that evaluate one.

ratioOf "one curve, 8 keys, playback order" "once kv_bench_ladder curve/keys:8/random:0" \
    "once kv_bench_peer_qt easingCurve/keys:8/random:0" 1.8 ns "Qt QEasingCurve"
ratioOf "one curve, 8 keys, random frames" "once kv_bench_ladder curve/keys:8/random:1" \
    "once kv_bench_peer_qt easingCurve/keys:8/random:1" 3 ns "Qt QEasingCurve"
ratioOf "one curve, 8192 keys, random frames" "once kv_bench_ladder curve/keys:8192/random:1" \
    "once kv_bench_peer_osg sampler/keys:8192/random:1" 2.5 ns "OpenSceneGraph cubic Bezier sampler"
if [[ -s $work/kv_bench_peer_qt.err ]]; then
    note "$(grep 'largest difference' "$work/kv_bench_peer_qt.err")."
fi

# The families of segments that the tests compare the quick evaluation over, with the literal one.
if [[ -x $bin/kv_bench_fallbacks ]]; then
    note ""
    note "## When the quick evaluation is not certain"
    note ""
    note "| segments | frames that need exact constants, % | frames that the literal code answers, % |"
    note "|---|---|---|"
    while read -r family again fallbacks; do
        note "| $family | $again | $fallbacks |"
    done < <("$bin/kv_bench_fallbacks")
    note ""
fi
