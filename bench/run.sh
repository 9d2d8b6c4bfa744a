#!/usr/bin/env bash
# The figures of a kernel call, in one table: the hot paths from the benchmarks of a Release build, and
# whole processes of the kernel against the local store (median of 5, in a scratch folder). Needs the
# store that `bash scripts/setup.sh main` prepares. Usage: bash bench/run.sh [build folder]
set -euo pipefail
root=$(cd "$(dirname "$0")/.." && pwd)
build=${1:-$root/build-bench}

export CCACHE_BASEDIR="$root" CCACHE_NOHASHDIR=1
cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER_LAUNCHER=ccache \
      -DTARVO_BENCHMARKS=ON >/dev/null
cmake --build "$build" -j2 --target tarvo bench_value bench_phases bench_streams bench_store >/dev/null

row() { printf '%-58s %14s\n' "$1" "$2"; }

# The median CPU time of a benchmark, in the unit that it reports. Of its standard error only a test database
# that it could not drop is worth telling.
bench() {
    "$build/bench/$1" --benchmark_filter="^$2\$" --benchmark_repetitions=5 \
        --benchmark_report_aggregates_only=true --benchmark_format=csv 2>"$scratch/stderr" |
        awk -F, -v name="$2_median" '$1 == "\"" name "\"" {printf "%.4g %s", $4, $5}'
    grep '^left behind' "$scratch/stderr" >&2 || true
}

# The median wall time of 5 runs of a kernel command, in ms; the last run's id.txt stays.
# The cases that it creates are removed again at the end.
scratch=$(mktemp -d)
cleanup() {
    sort -u "$scratch/ids" 2>/dev/null | while read -r id; do
        (cd "$scratch" && "$build/src/tarvo" remove "$id" >/dev/null 2>&1) || true
    done
    rm -rf "$scratch"
}
trap cleanup EXIT
process() {
    (cd "$scratch" && for _ in 1 2 3 4 5; do
        start=$(date +%s%N); "$build/src/tarvo" "$@" >out.txt 2>&1; end=$(date +%s%N)
        sed -n 's/^Stored with id //p' out.txt >> ids
        echo $(((end - start) / 1000))
    done) | sort -n | sed -n 3p | awk '{printf "%.1f ms", $1 / 1000}'
}
# Peak memory of one command, in MB.
peak() {
    (cd "$scratch" && /usr/bin/time -f '%M' "$build/src/tarvo" "$@" 2>&1 >/dev/null | tail -n 1) |
        awk '{printf "%.0f MB", $1 / 1024}'
}

printf 'load average: %s\n\n' "$(cut -d' ' -f1-3 /proc/loadavg)"
row "figure" "median"
double=$(bench bench_value BM_DoubleChain)
value=$(bench bench_value BM_ValueChain)
row "Value chain at numdir 0 / double chain" \
    "$(awk -v a="${value% *}" -v b="${double% *}" 'BEGIN {printf "%.2fx", a / b}')"
row "PT flash, five default components, two-phase" "$(bench bench_streams BM_FlashPtTwoPhase)"
row "PT flash, Peng-Robinson, four components" "$(bench bench_streams BM_FlashPtPengRobinsonTwoPhase)"
row "PA flash, IAPWS-95 saturated water" "$(bench bench_streams BM_FlashPaIapwsSaturatedWater)"
row "GERG-2004 pressure, five components, new density" "$(bench bench_phases BM_Gerg2004PressureFiveComponents/0)"
row "PT flash, GERG-2004 natural gas with water" "$(bench bench_streams BM_FlashPtGerg2004NaturalGasWithWater)"
row "store: insert of 100 nodes x 30 quantities" "$(bench bench_store BM_StoreInsert100x30/real_time)"
row "store: update of 100 nodes x 30 quantities" "$(bench bench_store BM_StoreUpdate100x30/real_time)"
row "tarvo types" "$(process types)"
for type in 'Test2<Membrane22Rtsc>' 'Test2<MembraneMulti22RtscCounterflow>' 'Test<Membrane12Rtsc>'; do
    row "tarvo new $type" "$(process new "$type")"
    id=$(cat "$scratch/id.txt")
    [ "$id" -ge 0 ] 2>/dev/null || { row "tarvo new $type" "failed: $id"; continue; }
    row "tarvo calculate $type" "$(process calculate "$id")"
done
# The first calculate of a new case of `type` (and its options): wall time in ms over `per`, peak memory.
first_calculate() {
    (cd "$scratch" && "$build/src/tarvo" new "$1" M '' "$2" >/dev/null 2>&1)
    id=$(cat "$scratch/id.txt")
    echo "$id" >> "$scratch/ids"
    start=$(date +%s%N)
    memory=$(peak calculate "$id")
    end=$(date +%s%N)
    echo "$(awk -v t=$(((end - start) / 1000)) -v n="$3" 'BEGIN {printf "%.2f ms", t / 1000 / n}'), $memory"
}
for stages in 10 100 1000; do
    row "calculate $stages stages: time per stage, peak memory" \
        "$(first_calculate 'Test<MembraneMulti12<Membrane12Rtsc>>' "{\"integerOptions\":{\"stages\":$stages}}" "$stages")"
done
# Five new cases, as each figure above is a median of five.
largest=$(for _ in 1 2 3 4 5; do first_calculate Merkel2010Fig7b '' 1; done | sort -n | sed -n 3p)
row "calculate Merkel2010Fig7b, the largest plant: time, peak memory (median of 5)" "$largest"
