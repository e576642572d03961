# Motion-capture files in and out.

# nanoseconds of the processor a key: disks are no matter
import() {
    local keys seconds TIMEFORMAT='%3U %3S'
    seconds=$({ time "$bin/kvanim" import "$models/$1" -o "$work/$1.osg" > "$work/$1.import.txt"; } 2>&1)
    keys=$(sed -n 's/.* \([0-9]*\) keys.*/\1/p' "$work/$1.import.txt" | head -n 1)
    awk -v keys="$keys" '{ print ($1 + $2) * 1e9 / keys }' <<< "$seconds"
}

if [[ -r $models/01_01.bvh ]]; then
    ratioOf "import of 4511 frames, a key" "import 01_03.bvh" "import 01_01.bvh" 1.3 ns "import of 2752 frames"
    scene=$work/01_01.bvh.osg
    ratioOf "reading the motion-capture scene" "fresh read $scene" "fresh getline $scene" 10 ms \
        "std::getline over the same file"
    ratioOf "writing the motion-capture scene" "fresh write $scene" "fresh fprintf $scene" 3 ms \
        "fprintf of the same numbers"
    keys=$(sed -n 's/.* \([0-9]*\) keys.*/\1/p' "$work/01_01.bvh.import.txt" | head -n 1)
    /usr/bin/time -f %M -o "$work/peak.txt" "$bin/kvanim" info "$scene" > /dev/null
    figure "peak memory of kvanim info, a key" \
        "$(awk -v k="$keys" '{ print $1 * 1024 / k }' "$work/peak.txt")" 1024 bytes
else
    note "assimp-testmodels is not installed: nothing is said about motion-capture files."
fi
