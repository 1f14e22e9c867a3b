#!/usr/bin/env bash
# Builds the product, its sanitized twin and the 64-bit build, and runs every test of each.
# What the tests reach of the product is counted, and has to be enough (scripts/coverage.sh).
#
#     scripts/test.sh [PRESET...]     i386, i386-asan and x86-64 unless told
#
# The last line is "N passed, N failed"; the status is 0 only when something ran and nothing failed.
set -uo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.." || exit 1
. scripts/lib/packages.sh
. scripts/lib/build.sh

presets=("$@")
[ $# -gt 0 ] || presets=(i386 i386-asan x86-64)
passed=0
failed=0

# A number from the head of a JUnit report.
reportedNumber() {
    sed -n "/<testsuite /,/>/s/.*[[:space:]]$1=\"\([0-9]*\)\".*/\1/p" "$2" | head -n 1
}

countReport() {
    local report=$1 ran wrong left
    if [ ! -s "$report" ]; then
        failed=$((failed + 1))
        return
    fi
    ran=$(reportedNumber tests "$report")
    wrong=$(reportedNumber failures "$report")
    left=$(($(reportedNumber skipped "$report") + $(reportedNumber disabled "$report")))
    [ "$left" -eq 0 ] || say "$left tests did not run."
    passed=$((passed + ran - wrong - left))
    failed=$((failed + wrong))
}

# Programs that ran whole: what each reports counts instead of the program.
countPrograms() {
    local report ran wrong
    for report in "$1"/*.xml; do
        [ -e "$report" ] || continue
        ran=$(sed -n 's/^<testsuites tests="\([0-9]*\)".*/\1/p' "$report")
        wrong=$(sed -n 's/^<testsuites .* failures="\([0-9]*\)".*/\1/p' "$report")
        passed=$((passed + ran - wrong - (wrong == 0)))
        failed=$((failed + wrong - (wrong > 0)))
    done
}

# Without a terminal only the failures and the summary are worth their lines.
runTests() {
    if [ -t 1 ]; then
        ctest "$@" --progress
    else
        ctest "$@" | grep -vE '^ +Start +[0-9]+: |^ *[0-9]+/[0-9]+ Test +#[0-9]+: .* Passed +[0-9.]+ sec$'
    fi
}

# The search for leaks traces the process, which fails under a debugger and in some containers.
withoutLeakSearchWhereItFails() {
    local probe=build/leak-search-probe
    mkdir -p build
    [ -x "$probe" ] || echo 'int main() {}' | g++ -m32 -fsanitize=address -x c++ - -o "$probe" || return 0
    if ! "$probe" 2>/dev/null; then
        say "Leaks cannot be searched for here; the other checks of the sanitizers stay on."
        export ASAN_OPTIONS="${ASAN_OPTIONS:+$ASAN_OPTIONS:}detect_leaks=0"
    fi
}

testPreset() {
    local preset=$1 report=$PWD/build/$1.tests.xml
    if ! buildPreset "$preset"; then
        say "The preset $preset does not build."
        failed=$((failed + 1))
        return
    fi
    rm -rf "$report" "build/$preset/test-reports"
    runTests --preset "$preset" --no-tests=error --output-junit "$report" || status=1
    countReport "$report"
    countPrograms "build/$preset/test-reports"
}

needPackages "${testPackages[@]}"
tryPackage "$benchmarkPackage"
tryPackage libaravis-dev:amd64
withoutLeakSearchWhereItFails
status=0
for preset in "${presets[@]}"; do
    testPreset "$preset"
done
# What the tests of the product build reach; below the bound the whole fails.
if [[ " ${presets[*]} " == *" i386 "* ]]; then
    if scripts/coverage.sh >&2; then
        passed=$((passed + 1))
    else
        failed=$((failed + 1))
        status=1
    fi
fi
echo "$passed passed, $failed failed"
[ "$status" -eq 0 ] && [ "$failed" -eq 0 ] && [ "$passed" -gt 0 ]
