# From containers into the manager: a scene of a million keys, and how loading grows.
million=$work/millionKeys.osb
"$bin/kv_bench_fresh" makeScene 1000000 "$million" > /dev/null
ratio "a scene of 1,000,000 keys read into the manager" "$(fresh toManager "$million")" \
    "$(fresh read "$million")" 0.5 ms "reading its file into containers"
figure "heap in use after reading the file, a key" "$(fresh containerBytes "$million")" 200 bytes
figure "heap in use after reading into the manager, a key" "$(fresh managerBytes "$million")" 160 bytes
rm "$million"
growth "stored keys read" 1000 "$(fresh importKeys 1000)" 10000 "$(fresh importKeys 10000)" \
    100000 "$(fresh importKeys 100000)"
growth "stored curves read" 1000 "$(fresh importCurves 1000)" 4000 "$(fresh importCurves 4000)" \
    16000 "$(fresh importCurves 16000)"
growth "stored blocks read" 1000 "$(fresh importBlocks 1000)" 4000 "$(fresh importBlocks 4000)" \
    16000 "$(fresh importBlocks 16000)"
growth "curves registered" 1000 "$(fresh addCurve 1000)" 4000 "$(fresh addCurve 4000)" \
    16000 "$(fresh addCurve 16000)"
