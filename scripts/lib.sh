# shellcheck shell=bash
# What the scripts share. Sourced, never run.

set -euo pipefail

root=$(cd "$(dirname "${BASH_SOURCE[0]}")/.." && pwd)
cd "$root"

say() { printf '%s\n' "$*"; }

# Ends the script with one line that says which step failed.
stop() {
    printf '%s: %s\n' "$(basename "$0")" "$*" >&2
    exit 1
}

# Runs a step; its output is shown only when it fails.
quietly() {
    local what=$1 log
    shift
    log=$(mktemp)
    if ! "$@" >"$log" 2>&1; then
        cat "$log" >&2
        rm -f "$log"
        stop "$what failed"
    fi
    rm -f "$log"
}

# Configures and builds a preset. Further arguments are targets; none builds everything.
build_preset() {
    local preset=$1
    shift
    if [ ! -f "build/$preset/build.ninja" ]; then
        say "Configuring build/$preset"
        quietly "configuring $preset" cmake --preset "$preset"
    fi
    say "Building build/$preset"
    local log
    log=$(mktemp)
    if ! cmake --build "build/$preset" ${*:+--target "$@"} >"$log" 2>&1; then
        grep -E 'error|warning|FAILED|undefined' "$log" >&2 || tail -n 40 "$log" >&2
        rm -f "$log"
        stop "building $preset failed"
    fi
    rm -f "$log"
}
