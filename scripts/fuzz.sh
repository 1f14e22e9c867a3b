#!/usr/bin/env bash
# Builds the fuzzers (Clang, x86-64, AddressSanitizer and UndefinedBehaviorSanitizer) and runs each for a while.
#
#     scripts/fuzz.sh [SECONDS [TARGET...]]       60 seconds and every target unless told
#     scripts/fuzz.sh keep [TARGET...]            takes found inputs that reach something new into the corpora
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
    -DORBELLINE_SANITIZERS=address,undefined,fuzzer-no-link -DORBELLINE_CONSOLE=OFF \
    -DCMAKE_CXX_FLAGS_RELWITHDEBINFO="-O2 -g1" >"$folder/configure.log"
cmake --build "$folder" --parallel "$buildJobs" --target "${targets[@]/#/orbelline_fuzzer_}" >&2

# The targets read and write small files all the time.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm

runFuzzer() {
    local target=$1
    shift
    mkdir -p "$folder/found/$target"
    nice "$folder/fuzz/orbelline_fuzzer_$target" "$@" 2>"$folder/$target.log"
}

# The fewest inputs that together reach what the corpus does not, as long as they are short.
keepInputs() {
    local target=$1 input
    say "== Looking for inputs of $target that reach something new"
    runFuzzer "$target" -set_cover_merge=1 -max_len=4000 "fuzz/corpus/$target" "$folder/found/$target"
    for input in "fuzz/corpus/$target"/*; do
        [[ ! ${input##*/} =~ ^([0-9a-f]{10})[0-9a-f]{30}$ ]] || mv "$input" "${input%/*}/found-${BASH_REMATCH[1]}"
    done
}

fuzz() {
    local target=$1 result=0
    say "== Fuzzing $target for $seconds seconds"
    runFuzzer "$target" -max_total_time="$seconds" -timeout=60 -print_final_stats=1 \
        -artifact_prefix="$folder/broken/$target-" "$folder/found/$target" "fuzz/corpus/$target" || result=1
    grep -E '^(stat::number_of_executed_units|==.*ERROR|Does not hold|Parameter .* differs|.*runtime error)' \
        "$folder/$target.log" >&2 || true
    return "$result"
}

status=0
for target in "${targets[@]}"; do
    if [ "$seconds" = keep ]; then
        keepInputs "$target" || status=1
    else
        fuzz "$target" || status=1
    fi
done
[ "$status" -eq 0 ] || say "Something broke: see $folder/broken and the logs beside it."
exit "$status"
