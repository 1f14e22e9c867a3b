#!/usr/bin/env bash
# Runs the tests of the product build with every line, function and branch of the product counted, and says how many
# of them were reached. build/coverage/report.txt tells it file by file, and what was not reached.
#
#     scripts/coverage.sh
#
# The status is 0 when every line and function and 95 % of the branches were reached, and the branches that were not
# are those of tests/coverage/UncoveredBranches.txt.
set -uo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
. scripts/lib/packages.sh
. scripts/lib/build.sh

needPackages "${testPackages[@]}"
# The tests write small files all the time.
[ ! -w /dev/shm ] || export TMPDIR=/dev/shm

report=build/coverage/report.txt
rm -f "$report"
status=0
buildPreset coverage || status=1
[ -e "$report" ] && head -n 1 "$report"
exit "$status"
