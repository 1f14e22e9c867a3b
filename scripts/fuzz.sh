#!/usr/bin/env bash
# Builds the fuzzers (Clang, x86-64, AddressSanitizer and UndefinedBehaviorSanitizer) and runs each for a while.
#
#     scripts/fuzz.sh [SECONDS [TARGET...]]       60 seconds and every target unless told
#
# New inputs stay in build/fuzz/found/TARGET. An input that breaks something is left in build/fuzz/broken; put it into
# fuzz/corpus/TARGET under a name that tells what it is, and every test run replays it.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh
. scripts/lib/build.sh

seconds=${1:-60}
[ $# -eq 0 ] || shift
targets=("$@")
[ $# -gt 0 ] || mapfile -t targets < <(ls fuzz/corpus)

needPackages "${testPackages[@]}" clang libclang-rt-14-dev
folder=build/fuzz
mkdir -p "$folder/broken"
cmake --preset x86-64 -B "$folder" -DCMAKE_C_COMPILER=clang -DCMAKE_CXX_COMPILER=clang++ -DORBELLINE_FUZZERS=ON \
    -DORBELLINE_SANITIZERS=address,undefined,fuzzer-no-link -DORBELLINE_CONSOLE=OFF >"$folder/configure.log"
cmake --build "$folder" --parallel "$buildJobs" --target "${targets[@]/#/orbelline_fuzzer_}" >&2

# The targets read and write small files all the time.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm

status=0
for target in "${targets[@]}"; do
    say "== Fuzzing $target for $seconds seconds"
    mkdir -p "$folder/found/$target"
    nice "$folder/fuzz/orbelline_fuzzer_$target" -max_total_time="$seconds" -timeout=10 -print_final_stats=1 \
        -artifact_prefix="$folder/broken/$target-" "$folder/found/$target" "fuzz/corpus/$target" \
        2>"$folder/$target.log" || status=1
    grep -E '^(stat::number_of_executed_units|==.*ERROR|Does not hold|.*runtime error)' "$folder/$target.log" >&2 || true
done
[ "$status" -eq 0 ] || say "Something broke: see $folder/broken and the logs beside it."
exit "$status"
