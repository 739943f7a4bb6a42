# shellcheck shell=bash
# What the scripts share. Sourced, never run.

set -euo pipefail

# Where the caller stood; the scripts themselves work in the project's folder.
# shellcheck disable=SC2034 # for the scripts that take paths
here=$PWD
root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

say() { printf '%s\n' "$*"; }

# Ends the script with one line that says what is wrong.
stop() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# The comment at the top of the calling script.
usage() {
    sed -n '2,/^[^#]/s/^# \{0,1\}//p' "$0"
}

mkdir -p build/logs 2>/dev/null || stop "cannot write to $root/build; to whom does it belong?"

# ccache and Qt want a home folder, and Qt a locale in UTF-8; neither is certain where nobody logs in.
if ! mkdir -p "${HOME:-}" 2>/dev/null || [ ! -w "$HOME" ]; then
    export HOME=$root/build/home
    mkdir -p "$HOME"
fi
if [ "$(locale charmap 2>/dev/null)" != UTF-8 ]; then
    export LC_ALL=C.UTF-8
fi

jobs=${JOBS:-$(nproc)}

# quietly NAME COMMAND...: runs a step whose output is of interest only when it fails. NAME is what the step does.
quietly() {
    local name=$1 log
    shift
    log=build/logs/${name//[^a-zA-Z0-9-]/-}.log
    if ! "$@" >"$log" 2>&1; then
        complaints "$log" >&2
        stop "$name failed; all of its output is in $log"
    fi
}

# The lines of a log that say what went wrong, or its end when none does.
complaints() {
    grep -E '^E: |[Ee]rror|FAILED|undefined reference' "$1" | head -n 30 | grep . || tail -n 15 "$1"
}

# The cache of compiled files takes part where headers were compiled before.
export CCACHE_SLOPPINESS=pch_defines,time_macros

# configure PRESET: only when the build folder is not there yet or the presets have changed; what else may have
# changed is noticed by the build.
configure() {
    local preset=$1
    case $preset in
    asan-ubsan | fuzz) scripts/setup clang ;;
    esac
    if [ ! -f "build/$preset/build.ninja" ] || [ CMakePresets.json -nt "build/$preset/build.ninja" ]; then
        say "Configuring build/$preset"
        quietly "configuring $preset" cmake --fresh --preset "$preset"
    fi
}

# build PRESET [TARGET...]: everything when no target is named. On a terminal the build shows its progress.
build() {
    local preset=$1 targets=()
    shift
    configure "$preset"
    [ $# -eq 0 ] || targets=(--target "$@")
    say "Building build/$preset"
    if [ -t 1 ]; then
        cmake --build "build/$preset" -j "$jobs" "${targets[@]}" || stop "building $preset failed"
    else
        quietly "building $preset" cmake --build "build/$preset" -j "$jobs" "${targets[@]}"
    fi
}
