#!/usr/bin/env bash
# Runs tests of the product and the console's main commands under valgrind: no read or write beside the memory that a
# program has, no use of a value that was never set, nothing lost at the end.
#
#     scripts/valgrind.sh
#
# The last line tells how many programs ran. What valgrind has to say about one that is not clean is shown.
set -euo pipefail

cd "$(dirname "${BASH_SOURCE[0]}")/.."
. scripts/lib/packages.sh
. scripts/lib/build.sh

# Programs with the tests to run. Left out, and left to the sanitizers, are
# - tests whose loops over every failure or every value take minutes under valgrind;
# - trigger times, which need the extended precision of long double: valgrind computes in 64 bits;
# - creation without a design, where the wrapper is kept on purpose.
keptWrapper='CreationFails.*Design*:CreationFails.WithoutWantedErrorToo'
suites=(
    "templates/orbelline_templates_tests *"
    "grabber_basis/orbelline_grabber_basis_tests *"
    "applet/orbelline_applet_identity_tests -$keptWrapper:*WhicheverCallFailsOnce*"
    "applet/orbelline_configuration_tests SaveConfiguration.*:LoadConfiguration.*:BadConfigurationFiles.*"
    "applet/orbelline_image_settings_tests -*LookupTableProcessing*:*WritableParameters*"
    "applet/orbelline_trigger_parameter_tests -*PulseFormGenerator*:*FrameRate*"
    "appletwrappers-baselib/orbelline_wrapper_base_tests *"
    "appletwrappers-baselib/orbelline_lut_file_tests LutFileWriting.*:LutFileLookups.*"
)

notClean=99
programs=0
failed=0

# The program's output is of no interest here; a failure of its own is, unless it is the point of the call.
underValgrind() {
    local expected=$1 name=$2 status=0
    shift 2
    nice valgrind --quiet --leak-check=full --errors-for-leak-kinds=definite,indirect,possible \
        --error-exitcode="$notClean" --num-callers=24 --log-file="$logs/valgrind" "$@" \
        >"$logs/output" 2>&1 </dev/null || status=$?
    programs=$((programs + 1))
    if [ "$status" -ne "$expected" ] || [ -s "$logs/valgrind" ]; then
        failed=$((failed + 1))
        say "== Not clean (status $status): $name"
        cat "$logs/valgrind" >&2
        tail -n 20 "$logs/output" >&2
    fi
}

console() { underValgrind 0 "orbctl $*" "$orbctl" "$@"; }
refusedConsole() { underValgrind 1 "orbctl $*" "$orbctl" "$@"; }

runSuites() {
    local suite program
    for suite in "${suites[@]}"; do
        program=${suite%% *}
        say "== ${program##*/}"
        underValgrind 0 "$program" "build/i386/tests/$program" --gtest_brief=1 --gtest_filter="${suite#* }"
    done
}

runConsole() {
    say "== orbctl"
    console info
    console list
    console get FG_WIDTH FG_FORMAT FG_TRIGGER_FRAMESPERSECOND
    console set FG_WIDTH=640 FG_FORMAT=FG_GRAY16
    refusedConsole set FG_WIDTH=20
    console describe FG_WIDTH
    console defaults
    console status
    console events
    console xml --port 1
    console trigger
    console lut show
    console registers
    console --set FG_WIDTH=512 save "$logs/settings.mcf"
    console load "$logs/settings.mcf"
    console lut save "$logs/table.lut"
    console lut load "$logs/table.lut"
    console --set FG_WIDTH=64 --set FG_HEIGHT=64 --set FG_TRIGGERSTATE=TS_ACTIVE acquire -n 2 --out "$logs/pictures"
}

needPackages "${testPackages[@]}" valgrind
tryPackage libc6-dbg:i386
if ! isInstalled libc6-dbg:i386; then
    say "Without libc6-dbg:i386 valgrind cannot follow 32-bit programs."
    exit 1
fi
targets=()
for suite in "${suites[@]}"; do
    program=${suite%% *}
    targets+=("${program##*/}")
done
buildPreset i386 "${targets[@]}" orbctl Orbelline
orbctl=$PWD/build/i386/console/orbctl
logs=$(mktemp -d)
trap 'rm -r "$logs"' EXIT

runSuites
runConsole
echo "$((programs - failed)) clean, $failed not clean"
[ "$failed" -eq 0 ]
