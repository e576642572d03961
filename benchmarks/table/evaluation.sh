# One curve, beside the peers that evaluate one.

# inTurns NAME PEER NAME_THERE: the medians of two benchmarks taken in turns, because the machine is
# not equally quick all the time, into ${here} and ${there}; the latter is empty when the peer is not
# installed.
inTurns() {
    local i
    : > "$work/here.txt"
    : > "$work/there.txt"
    for ((i = 0; i < 2 * runs; ++i)); do
        once kv_bench_ladder "$1" >> "$work/here.txt"
        [[ ! -x $bin/$2 ]] || once "$2" "$3" >> "$work/there.txt"
    done
    here=$(median < "$work/here.txt")
    there=$(median < "$work/there.txt")
}

inTurns curve/keys:8/random:0 kv_bench_peer_qt easingCurve/keys:8/random:0
ratio "one curve, 8 keys, playback order" "$here" "$there" 1.8 ns "Qt QEasingCurve"
inTurns curve/keys:8/random:1 kv_bench_peer_qt easingCurve/keys:8/random:1
ratio "one curve, 8 keys, random frames" "$here" "$there" 3 ns "Qt QEasingCurve"
inTurns curve/keys:8192/random:1 kv_bench_peer_osg sampler/keys:8192/random:1
ratio "one curve, 8192 keys, random frames" "$here" "$there" 2.5 ns \
    "OpenSceneGraph cubic Bezier sampler"
unset here there
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
