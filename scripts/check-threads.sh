#!/usr/bin/env bash
# Runs the tests of many threads under ThreadSanitizer (x86-64). A data race fails, as does an update that is lost.
#
#     scripts/check-threads.sh [REPETITIONS]      each test 5 times unless told
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh
. scripts/lib/build.sh

repetitions=${1:-5}

needPackages "${testPackages[@]}"
buildPreset x86-64-tsan orbelline_thread_tests
exec ctest --preset x86-64-tsan --tests-regex '^Threads\.' --no-tests=error --repeat "until-fail:$repetitions"
