# Making and editing keys and identifiers: in fresh processes, as the store of ids never shrinks.
ratio "a key inserted in ascending order, of 100,000" "$(fresh insert 100000)" \
    "$(fresh insert 1000)" 2 ns "of 1,000"
growth "keys inserted in ascending order" 1000 "$(fresh insert 1000)" 10000 "$(fresh insert 10000)" \
    100000 "$(fresh insert 100000)"
ratio "a key inserted in random order, of 10,000" "$(fresh insertRandom 10000)" \
    "$(fresh insertLiteral 10000)" 0.1 ns "the plain list that the tests compare with"
# Many calls a round, so that the clock does not count: one of them is a hundredth.
ratio "100 moves of a key that keep the order, of 10,000 keys" "$(fresh moveKeys 10000 100)" \
    "$(fresh moveKeys 100 100 | awk '{ print $1 / 100 }')" 150 ns "one such move, of 100 keys"
growth "selected keys removed" 1000 "$(fresh deleteKeys 1000)" 10000 "$(fresh deleteKeys 10000)" \
    100000 "$(fresh deleteKeys 100000)"
growth "selected keys given another type" 1000 "$(fresh retangent 1000)" \
    10000 "$(fresh retangent 10000)" 100000 "$(fresh retangent 100000)"
ratio "an identifier, of 300,000" "$(fresh ids 300000)" "$(fresh ids 1000)" 2 ns "of 1,000"
growth "identifiers" 1000 "$(fresh ids 1000)" 30000 "$(fresh ids 30000)" 300000 "$(fresh ids 300000)"
note "An identifier, of 1,000,000 (most of the values are given by then): $(fresh ids 1000000) ns."
