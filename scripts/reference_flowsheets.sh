#!/usr/bin/env bash
# Creates and calculates every flowsheet of the membrane collection, the test beds and the reference plants,
# each type and alias, in the store of the kernel's configuration, and prints one table: type, errors,
# warnings, the stage cut of each membrane unit, the recoveries and purities of the product, power and
# specific power where the plant has them, and the wall time of `new` and of `calculate`, each a whole
# process.
#
#   bash scripts/reference_flowsheets.sh              # the build in build/
#   REPEAT=3 bash scripts/reference_flowsheets.sh     # times: the median of 3 cases of each type
#   TARVO=/path/to/tarvo KEEP=1 bash scripts/...      # another kernel; keep the cases in the store
#
# The cases are removed at the end unless KEEP is set; their ids are in the last column.
set -euo pipefail

here=$(cd "$(dirname "$0")/.." && pwd)
tarvo=${TARVO:-$here/build/src/tarvo}
repeat=${REPEAT:-1}
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

types=(Test 'Test<Membrane12Rtsc>' 'Test<Membrane12Cstr>' 'Test<MembraneMulti12<Membrane12Rtsc>>'
       'Test<MembraneMulti12<Membrane12Cstr>>' Test2 'Test2<Membrane22Rtsc>' 'Test2<Membrane22Linear>'
       'Test2<MembraneMulti22RtscCoflow>' 'Test2<MembraneMulti22RtscCounterflow>'
       'Test2<MembraneMulti22LinearCoflow>' 'Test2<MembraneMulti22LinearCounterflow>' Merkel2010Fig7a Merkel2010Fig7aCounterflow Merkel2010Fig7aLinearCounterflow Merkel2010Fig7b
       Merkel2010Fig7bLinearCounterflow Merkel2010Fig11 Deng2010Fig6b Makaruk2010Fig2
       Makaruk2010Fig2FreeFlowRtsc Makaruk2010Fig2FreeFlowCstr Benchmark Upgrading)
components=(CO2 CH4 H2O N2 O2)

now() { date +%s.%N; }
elapsed() { awk -v a="$1" -v b="$2" 'BEGIN { printf "%.3f", b - a }'; }
median() { printf '%s\n' "$@" | sort -g | awk '{ v[NR] = $1 } END { print v[int((NR + 1) / 2)] }'; }

# The values of the text report as path=value lines: the case's own at the top ("power"), those of its
# children under their tags ("GM.stageCut").
values() {
    awk '
        /^\*\*\* Begin / && !/attributes/ { path[++depth] = $3; next }
        /^\*\*\* End / && !/attributes/ { --depth; next }
        / = / && !/^\*/ {
            prefix = ""
            for (k = 1; k <= depth; ++k) prefix = prefix path[k] "."
            print prefix $1 "=" $3
        }' "$1"
}

# One field of the table from the values in $1: "name=value" for each of the names that the case has.
pick() {
    local file=$1 sep="" out=""
    shift
    for name in "$@"; do
        local v
        v=$(grep -m1 "^${name//[/\\[}=" "$file" | cut -d= -f2 || true)
        [ -n "$v" ] && out+="$sep$name=$(printf '%.4g' "$v" 2>/dev/null || echo "$v")" && sep=" "
    done
    echo "${out:--}"
}

# The entries of a vector over the components, by component name, those that are numbers.
vector() {
    local file=$1 name=$2 sep="" out=""
    for i in "${!components[@]}"; do
        local v
        v=$(grep -m1 "^$name\[$i\]=" "$file" | cut -d= -f2 || true)
        case "$v" in "" | nan | -nan | inf | -inf) continue ;; esac
        out+="$sep${components[$i]}=$(printf '%.4g' "$v")" && sep=" "
    done
    echo "${out:--}"
}

ids=()
printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n' type errors warnings "stage cuts" recovery purity power \
    "new s" "calculate s" id
for type in "${types[@]}"; do
    news=() calcs=()
    for ((r = 0; r < repeat; ++r)); do
        start=$(now)
        (cd "$work" && "$tarvo" new "$type" reference >/dev/null 2>"$work/new.err") || {
            echo "$type: new failed: $(tail -1 "$work/new.err")" >&2
            exit 1
        }
        made=$(now)
        id=$(cat "$work/id.txt")
        ids+=("$id")
        (cd "$work" && "$tarvo" calculate "$id" >"$work/calculate.out" 2>&1) || {
            echo "$type: calculate failed: $(tail -1 "$work/calculate.out")" >&2
            exit 1
        }
        done_=$(now)
        news+=("$(elapsed "$start" "$made")")
        calcs+=("$(elapsed "$made" "$done_")")
    done
    summary=$(grep -ao "Computation complete with [0-9]* errors and [0-9]* warnings" "$work/calculate.out")
    errors=$(echo "$summary" | awk '{ print $4 }')
    warnings=$(echo "$summary" | awk '{ print $7 }')
    (cd "$work" && "$tarvo" txt "$id" report.txt >/dev/null 2>&1)
    values "$work/report.txt" >"$work/values.txt"
    cuts=$(awk -F= '/^[A-Za-z0-9]+\.stageCut=/ { sub(/\.stageCut/, "", $1); printf "%s%s=%.4g", sep, $1, $2; sep = " " }' \
           "$work/values.txt")
    if grep -q '^recoveryTotal\[' "$work/values.txt"; then
        recovery="total: $(vector "$work/values.txt" recoveryTotal)"
    else
        recovery=$(vector "$work/values.txt" recovery)
    fi
    purity=$(vector "$work/values.txt" purity)
    power=$(pick "$work/values.txt" power specificPower powerConsumption powerProduced LHVin etaL ICE.We)
    printf '%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\t%s\n' "$type" "$errors" "$warnings" "${cuts:--}" "$recovery" \
        "$purity" "$power" "$(median "${news[@]}")" "$(median "${calcs[@]}")" "$id"
done

if [ -z "${KEEP:-}" ]; then
    for id in "${ids[@]}"; do (cd "$work" && "$tarvo" remove "$id" >/dev/null 2>&1) || true; done
fi
