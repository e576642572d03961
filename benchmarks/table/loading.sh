# From containers into the manager: a scene of a million keys, and how loading grows.
million=$work/millionKeys.osb
"$bin/kv_bench_fresh" makeScene 1000000 "$million" > /dev/null
ratioOf "a scene of 1,000,000 keys read into the manager" "fresh toManager $million" "fresh read $million" 0.5 \
    ms "reading its file into containers"
figure "heap in use after reading the file, a key" "$(medianOf fresh containerBytes "$million")" 200 bytes
figure "heap in use after reading into the manager, a key" "$(medianOf fresh managerBytes "$million")" 160 bytes
rm "$million"
growthOf "stored keys read" "fresh importKeys" 1000 10000 100000
growthOf "stored curves read" "fresh importCurves" 1000 4000 16000
growthOf "stored blocks read" "fresh importBlocks" 1000 4000 16000
growthOf "curves registered" "fresh addCurve" 1000 4000 16000
