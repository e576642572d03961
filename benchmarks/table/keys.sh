# Making and editing keys and identifiers: in fresh processes, as the store of ids never shrinks.
ratio "a key inserted in ascending order, of 100,000" "$(fresh insert 100000)" \
    "$(fresh insert 1000)" 2 ns "of 1,000"
growth "keys inserted in ascending order" 1000 "$(fresh insert 1000)" 10000 "$(fresh insert 10000)" \
    100000 "$(fresh insert 100000)"
ratio "an identifier, of 300,000" "$(fresh ids 300000)" "$(fresh ids 1000)" 2 ns "of 1,000"
growth "identifiers" 1000 "$(fresh ids 1000)" 30000 "$(fresh ids 30000)" 300000 "$(fresh ids 300000)"
note "An identifier, of 1,000,000 (most of the values are given by then): $(fresh ids 1000000) ns."
