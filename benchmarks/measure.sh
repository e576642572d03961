# How the rows of the table are measured and judged; sourced by run.sh.

median() { sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# Measurements are commands that print one figure; those whose program is not installed print nothing.
# The machine is not equally quick all the time: what is compared is measured in turns.

# fresh WHAT ARGUMENT...: a figure of a process of its own.
fresh() { "$bin/kv_bench_fresh" "$@"; }

# once PROGRAM NAME: one benchmark of a suite, alone; nanoseconds.
once() {
    [[ -x $bin/$1 ]] || return 0
    "$bin/$1" --benchmark_filter="^$2\$" --benchmark_min_time=0.1 --benchmark_format=csv \
        2> "$work/once.err" | awk -F, '/^"/ { print $4 }'
}

# medianOf COMMAND...: the median over the runs.
medianOf() {
    local i
    for ((i = 0; i < runs; ++i)); do "$@"; done | median
}

# suite PROGRAM: all its benchmarks, medians of repetitions in random order, into PROGRAM.txt, as
# "name nanoseconds"; a counter of a benchmark as "name#counter value". A program whose peer is not
# installed was not built and is left out; one that fails ends the run.
suite() {
    : > "$work/$1.txt"
    [[ -x $bin/$1 ]] || return 0
    echo "== $1" >&2
    "$bin/$1" --benchmark_repetitions="$runs" --benchmark_report_aggregates_only=true \
        --benchmark_min_time=0.1 --benchmark_enable_random_interleaving=true \
        --benchmark_out="$work/$1.json" --benchmark_out_format=json \
        > "$work/$1.out" 2> "$work/$1.err" || {
        tail -n 5 "$work/$1.err" >&2
        return 1
    }
    # One field stands on a line; those between the time's unit and the brace are counters.
    awk '{ gsub(/[",]/, "") }
        $1 == "run_name:" { name = $2 }
        $1 == "aggregate_name:" { median = $2 == "median" }
        $1 == "cpu_time:" { time = $2 }
        $1 == "time_unit:" { inCounters = 1
            if (median) print name, time * ($2 == "ms" ? 1e6 : $2 == "us" ? 1e3 : 1)
            next }
        $1 ~ /^}/ { inCounters = 0 }
        inCounters && median { sub(/:$/, "", $1); print name "#" $1, $2 }' \
        "$work/$1.json" > "$work/$1.txt"
}

# note TEXT: a line below the table.
note() { printf '%s\n' "$1" | tee -a "$work/notes.txt"; }

# ratio TITLE OURS PEER LIMIT UNIT BESIDE: one row of the table.
ratio() {
    local title=$1 ours=$2 peer=$3 limit=$4 unit=$5 beside=$6
    if [[ -z $ours || -z $peer ]]; then
        printf '| %s | | | | not measured: %s is absent |\n' "$title" "$beside" | tee -a "$rows"
        return
    fi
    awk -v t="$title" -v o="$ours" -v p="$peer" -v l="$limit" -v u="$unit" -v b="$beside" -v f="$failed" '
        BEGIN { r = o / p
                printf "| %s | %.4g %s | %.4g %s | %.2f (at most %s) | %s |\n", t, o, u, p, u, r, l, b
                if (r > l * 1.25) print t >> f }' | tee -a "$rows"
}

# ratioOf TITLE COMMAND COMMAND_BESIDE LIMIT UNIT BESIDE: a row of two commands, each in one word, that
# are measured in turns. Of the pairs the one with the median ratio counts.
ratioOf() {
    local i here there
    : > "$work/pairs.txt"
    for ((i = 0; i < runs; ++i)); do
        # shellcheck disable=SC2086
        here=$($2) there=$($3)
        [[ -z $here || -z $there ]] ||
            awk -v h="$here" -v t="$there" 'BEGIN { print h / t, h, t }' >> "$work/pairs.txt"
    done
    here='' there=''
    [[ ! -s $work/pairs.txt ]] || read -r _ here there < <(sort -g "$work/pairs.txt" |
        awk '{ line[NR] = $0 } END { print line[int((NR + 1) / 2)] }')
    ratio "$1" "$here" "$there" "${@:4}"
}

# figure TITLE VALUE LIMIT UNIT: a row without a peer, such as a count or bytes; its limit holds
# as it stands.
figure() {
    awk -v t="$1" -v v="$2" -v l="$3" -v u="$4" -v f="$failed" '
        BEGIN { printf "| %s | %.4g %s | | (at most %s %s) | |\n", t, v, u, l, u
                if (v == "" || v + 0 > l + 0) print t >> f }' | tee -a "$rows"
}

# growth TITLE N1 EACH1 N2 EACH2 ...: the exponent of the total time's growth, fitted through the
# nanoseconds that each of N items took.
growth() {
    local title=$1
    shift
    printf '%s %s\n' "$@" | awk -v t="$title" -v f="$failed" '
        { x = log($1); y = log($1 * $2); n++; sx += x; sy += y; sxx += x * x; sxy += x * y
          seen = seen (n > 1 ? ", " : "") sprintf("%.4g", $2) " of " $1 }
        END { e = (n * sxy - sx * sy) / (n * sxx - sx * sx)
              printf "| %s, growth exponent | %.2f | | (at most 1.1) | ns each: %s |\n", t, e, seen
              if (!(e <= 1.1)) print t >> f }' | tee -a "$rows"
}

# growthOf TITLE COMMAND N...: the growth of a command that takes the number of items, measured for all
# of them in turns.
growthOf() {
    local title=$1 command=$2 i n sizes=()
    shift 2
    for n in "$@"; do : > "$work/growth.$n.txt"; done
    for ((i = 0; i < runs; ++i)); do
        # shellcheck disable=SC2086
        for n in "$@"; do $command "$n" >> "$work/growth.$n.txt"; done
    done
    for n in "$@"; do sizes+=("$n" "$(median < "$work/growth.$n.txt")"); done
    growth "$title" "${sizes[@]}"
}
