#!/usr/bin/env bash
# Builds the libFuzzer targets of fuzz/ in build-fuzz (clang, address and undefined-behaviour sanitizers)
# and runs each for a bounded time, starting from a scratch copy of its seed corpus so that nothing is
# written into the repository. Prints per target what libFuzzer reports (executions, exec/s, corpus size,
# cov and ft) and exits nonzero if any target crashed, leaked, timed out, ran out of memory or broke one of
# its properties. The inputs that did are kept in build-fuzz/artifacts/<target>/, the logs in
# build-fuzz/fuzz-logs/<target>.log.
#
#   scripts/fuzz.sh [TARGET...]      every target under fuzz/ when none is named
#
# Environment:
#   FUZZ_SECONDS   time per target, in seconds (60)
#   FUZZ_TIMEOUT   time per input before it counts as a hang, in seconds (10)
#   FUZZ_RSS_MB    memory limit per target, in MB (2048)
#   FUZZ_PARALLEL  targets run at once, 1 or 2 (1)
set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
build=$root/build-fuzz
seconds=${FUZZ_SECONDS:-60}
timeout=${FUZZ_TIMEOUT:-10}
rss=${FUZZ_RSS_MB:-2048}
parallel=${FUZZ_PARALLEL:-1}

die() {
    echo "fuzz.sh: $*" >&2
    exit 2
}

for number in "$seconds" "$timeout" "$rss" "$parallel"; do
    [[ $number =~ ^[1-9][0-9]*$ ]] ||
        die "FUZZ_SECONDS, FUZZ_TIMEOUT, FUZZ_RSS_MB and FUZZ_PARALLEL take whole numbers above 0"
done
((parallel <= 2)) || die "FUZZ_PARALLEL is 1 or 2: the machine has two cores"

if (($# > 0)); then
    targets=("$@")
else
    targets=()
    for source in "$root"/fuzz/fuzz_*.cpp; do targets+=("$(basename "$source" .cpp)"); done
fi
for target in "${targets[@]}"; do
    [[ -f $root/fuzz/$target.cpp ]] || die "no target $target (fuzz/$target.cpp)"
done

# clang and its sanitizer and fuzzer runtimes, from Debian; the rest comes with the kernel's own set-up.
missing=()
for package in clang libclang-rt-dev; do
    dpkg-query -W -f='${Status}' "$package" 2>/dev/null | grep -q 'install ok installed' || missing+=("$package")
done
if ((${#missing[@]})); then
    DEBIAN_FRONTEND=noninteractive apt-get install -y -q --no-install-recommends "${missing[@]}" ||
        die "cannot install ${missing[*]}"
fi

# Configure once; the build itself does nothing when it is up to date.
if [[ ! -f $build/CMakeCache.txt ]]; then
    cc=$(command -v clang-14 || command -v clang) || die "clang is needed"
    cxx=$(command -v clang++-14 || command -v clang++) || die "clang++ is needed"
    launcher=()
    if command -v ccache >/dev/null; then launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache); fi
    CC=$cc CXX=$cxx cmake -S "$root" -B "$build" -G Ninja -DCMAKE_BUILD_TYPE=RelWithDebInfo -DTARVO_FUZZ=ON \
        "${launcher[@]}"
fi
cmake --build "$build" -j2 --target "${targets[@]}"

# Runs one target in a folder of its own, as flowsheets write their schedules into the working directory;
# its status is libFuzzer's exit code.
run() {
    local target=$1
    local corpus=$build/fuzz-corpus/$target work=$build/fuzz-work/$target
    local artifacts=$build/artifacts/$target log=$build/fuzz-logs/$target.log
    rm -rf "$corpus" "$work"
    mkdir -p "$corpus" "$artifacts" "$work" "$(dirname "$log")"
    cp -R "$root/fuzz/corpus/$target/." "$corpus/"
    local options=(-max_total_time="$seconds" -timeout="$timeout" -rss_limit_mb="$rss" -print_final_stats=1
                   -artifact_prefix="$artifacts/")
    if [[ -f $root/fuzz/$target.dict ]]; then options+=(-dict="$root/fuzz/$target.dict"); fi
    (cd "$work" && "$build/fuzz/$target" "${options[@]}" "$corpus" >"$log" 2>&1)
}

# The value after "NAME: " in a libFuzzer status line.
field() { sed -n "s/.* $1: \([^ ]*\).*/\1/p" <<<"$2"; }

# One line per target from its log: the last status line carries cov, ft and corp, the final statistics
# the executions and their rate.
summarize() {
    local target=$1 code=$2 log=$build/fuzz-logs/$1.log
    local last verdict=ok
    last=$(grep -E '^#[0-9]+.*cov: ' "$log" | tail -n 1 || true)
    ((code == 0)) || verdict="FAILED (exit $code), see $log and $build/artifacts/$target/"
    printf '%-16s executions %-10s exec/s %-7s cov %-6s ft %-7s corp %-12s %s\n' "$target" \
        "$(sed -n 's/^stat::number_of_executed_units: *//p' "$log")" \
        "$(sed -n 's/^stat::average_exec_per_sec: *//p' "$log")" \
        "$(field cov "$last")" "$(field ft "$last")" "$(field corp "$last")" "$verdict"
}

declare -A status
for ((first = 0; first < ${#targets[@]}; first += parallel)); do
    batch=("${targets[@]:first:parallel}")
    pids=()
    for target in "${batch[@]}"; do
        echo "fuzzing $target for $seconds s" >&2
        run "$target" &
        pids+=($!)
    done
    for i in "${!batch[@]}"; do
        if wait "${pids[i]}"; then status[${batch[i]}]=0; else status[${batch[i]}]=$?; fi
    done
done

failed=0
for target in "${targets[@]}"; do
    summarize "$target" "${status[$target]}"
    if ((status[$target] != 0)); then
        failed=1
        reasons='^==[0-9]+== ?ERROR|^SUMMARY|runtime error|^fuzz property broken|Test unit written'
        grep -E "$reasons" "$build/fuzz-logs/$target.log" | head -n 10 | sed 's/^/    /'
    fi
done
exit "$failed"
