# shellcheck shell=bash disable=SC2034
# Configures and builds presets. Sourced after packages.sh, not run.

buildJobs=$(nproc)

# The preset, then the targets to build; all of them unless told.
buildPreset() {
    local preset=$1 log=build/$1.configure.log targets=()
    shift
    [ $# -eq 0 ] || targets=(--target "$@")
    say "== Building the preset $preset"
    mkdir -p build
    if ! cmake --preset "$preset" -DORBELLINE_BATCHES=ON >"$log" 2>&1; then
        cat "$log" >&2
        return 1
    fi
    grep 'Left out:' "$log" >&2 || true
    cmake --build --preset "$preset" --parallel "$buildJobs" "${targets[@]}" >&2
}
