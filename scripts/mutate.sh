#!/usr/bin/env bash
# Changes the product's sources in a copy, one place at a time, and runs the tests until one falls. A change that no
# test notices survives: it gets a test, or an entry with its reason in tests/mutation/Survivors.txt.
#
#     scripts/mutate.sh [--count N] [--seed N] [--jobs N] [--files PATTERN] [--again] [--thorough]
#
#     --count     how many changes to try, spread over files and kinds; 250 unless told
#     --seed      which ones; the same seed chooses the same changes, 1 unless told
#     --jobs      how many at a time; as many as there are processors unless told
#     --files     only in files like this ("applet/Trigger*.cpp")
#     --again     only what the last run did not finish, and its survivors
#     --thorough  with the fault sweeps and every test that takes longer than two seconds
#
# Everything happens in build/mutation. The status is 0 when nothing survives without an explanation.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh

needPackages "${testPackages[@]}"
work=$PWD/build/mutation
mkdir -p "$work"

# The copy keeps the times of its files, so that only what changed is built again.
rm -rf "$work/tree"
mkdir "$work/tree"
git ls-files -z --cached --others --exclude-standard |
    tar --create --null --files-from=- --ignore-failed-read | tar --extract --directory="$work/tree"

cmake -G Ninja -S "$work/tree" -B "$work/build" -DCMAKE_BUILD_TYPE=Debug "-DCMAKE_CXX_FLAGS_DEBUG=-O1 -g0" \
    -DCMAKE_GTEST_DISCOVER_TESTS_DISCOVERY_MODE=PRE_TEST \
    -DORBELLINE_CONSOLE=OFF -DORBELLINE_BENCHMARKS=OFF >"$work/configure.log"

# The tests write small files all the time.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm

exec nice python3 -B scripts/lib/mutation --tree "$work/tree" --work "$work" \
    --explained tests/mutation/Survivors.txt "$@"
