#!/usr/bin/env bash
# Checks every source with clang-format and clang-tidy.
#
#     scripts/lint.sh [SOURCE...]     clang-tidy looks at these sources only
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh
. scripts/lib/build.sh

needPackages "${testPackages[@]}" clang-format clang-tidy
build=build/lint
# What is built for tests is compiled in batches, which clang-tidy does not see through.
cmake --preset i386 -B "$build" -DORBELLINE_BATCHES=OFF >/dev/null

git ls-files -z '*.h' '*.cpp' | xargs -0 clang-format --dry-run -Werror

sources=("$@")
[ $# -gt 0 ] || mapfile -t sources < <(git ls-files '*.cpp')
known=()
for source in "${sources[@]}"; do
    if grep -q "\"$PWD/$source\"" "$build/compile_commands.json"; then
        known+=("$source")
    else
        say "Not part of the build, left out: $source"
    fi
done
printf '%s\0' "${known[@]}" | xargs -0 -n 1 -P "$buildJobs" clang-tidy -p "$build" --quiet
say "Formatted as agreed and tidy: ${#known[@]} sources."
