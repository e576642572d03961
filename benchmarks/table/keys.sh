# Making and editing keys and identifiers: in fresh processes, as the store of ids never shrinks.
ratioOf "a key inserted in ascending order, of 100,000" "fresh insert 100000" "fresh insert 1000" 2 ns \
    "of 1,000"
growthOf "keys inserted in ascending order" "fresh insert" 1000 10000 100000
ratioOf "a key inserted in random order, of 10,000" "fresh insertRandom 10000" \
    "fresh insertLiteral 10000" 0.1 ns "the plain list that the tests compare with"
# Many calls a round, so that the clock does not count: one of them is a hundredth.
oneMove() { fresh moveKeys 100 100 | awk '{ print $1 / 100 }'; }
ratioOf "100 moves of a key that keep the order, of 10,000 keys" "fresh moveKeys 10000 100" oneMove 150 ns \
    "one such move, of 100 keys"
growthOf "selected keys removed" "fresh deleteKeys" 1000 10000 100000
growthOf "selected keys given another type" "fresh retangent" 1000 10000 100000
ratioOf "an identifier, of 300,000" "fresh ids 300000" "fresh ids 1000" 2 ns "of 1,000"
growthOf "identifiers" "fresh ids" 1000 30000 300000
note "An identifier, of 1,000,000 (most of the values are given by then): $(medianOf fresh ids 1000000) ns."
