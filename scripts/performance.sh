#!/usr/bin/env bash
# Measures the product and writes the figures into docs/performance.md, between its two marks.
#
#     scripts/performance.sh [REPETITIONS]        20 unless told
#
# Let the machine do nothing else meanwhile: of a figure's repetitions the quickest counts, but all of them suffer.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh
. scripts/lib/build.sh

repetitions=${1:-20}
page=docs/performance.md
build=build/i386
figures=$build/performance.table.md
memory=$build/performance.memory.md

needPackages "${testPackages[@]}" "$benchmarkPackage"
buildPreset i386 orbelline_benchmarks orbelline_allocation_count_tests

"$build/benchmarks/orbelline_benchmarks" --benchmark_min_time=0.02 --benchmark_repetitions="$repetitions" \
    --benchmark_enable_random_interleaving=true --markdown="$figures" >"$build/performance.log"

{
    printf '| what is counted | |\n|---|---:|\n'
    "$build/tests/trust/orbelline_allocation_count_tests" --gtest_filter='*CountedCreation*' |
        sed -n 's/^\([A-Z][A-Za-z]*\): \([0-9]*\)$/| \1 | \2 |/p' | sed 's/\([a-z]\)\([A-Z]\)/\1 \l\2/g' | sort -u
} >"$memory"

measuredOn() {
    printf 'Measured on %s, %s, with %s.\n' "$(sed -n 's/^model name[^:]*: //p' /proc/cpuinfo | head -n 1)" \
        "$(nproc) cores" "$(g++ --version | head -n 1)"
}

{
    sed '/<!-- figures -->/q' "$page"
    printf '\n'
    measuredOn
    printf '\n'
    cat "$figures"
    printf '\n'
    cat "$memory"
    printf '\n'
    sed -n '/<!-- end of figures -->/,$p' "$page"
} >"$build/performance.page.md"
cp "$build/performance.page.md" "$page"
say "The figures are in $page."
