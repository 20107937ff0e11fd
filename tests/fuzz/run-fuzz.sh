#!/usr/bin/env bash
# Runs the fuzz targets of this folder, each for so many seconds, as many at once as there are processors,
# and prints for each how many inputs it has run, how much of the program it has reached, and what it has
# found. Fails when anything was found.
#
#   tests/fuzz/run-fuzz.sh [-j JOBS] SECONDS [TARGET...]     all targets, or those named
set -uo pipefail
cd -- "$(dirname -- "${BASH_SOURCE[0]}")/../.." || exit 1
# shellcheck source=contrib/packages.sh
source contrib/packages.sh

all=(exchange command-reader lan-stream serial-line usb-answer distribute json-file parameter-file lan-file
    words target device-id)
jobs=$(nproc)
if [[ ${1:-} == -j ]]; then
    jobs=${2:-}
    shift 2 || exit 2
fi
if [[ ! ${1:-} =~ ^[1-9][0-9]*$ || ! $jobs =~ ^[1-9][0-9]*$ ]]; then
    echo "usage: tests/fuzz/run-fuzz.sh [-j JOBS] SECONDS [TARGET...]" >&2
    exit 2
fi
seconds=$1
shift
for target in "$@"; do
    if [[ " ${all[*]} " != *" $target "* ]]; then
        echo "No such target: $target (there are: ${all[*]})" >&2
        exit 2
    fi
done
[[ $# -eq 0 ]] && set -- "${all[@]}"

build=build/fuzz
build_preset fuzz varden_fuzz || exit

# A time limit goes by the clock on the wall: on a busy machine milliseconds can take half a minute.
# run_target TARGET: its output in a log, its result as that of the program.
run_target() {
    local corpus=$build/corpus/$1 longest=4096 folders=()
    case $1 in
        *-file) longest=20000 ;;
    esac
    case $1 in
        parameter-file | lan-file) folders=("$build/samples/golden" "$build/samples/broken") ;;
        *) folders=("$build/seeds/$1") ;;
    esac
    mkdir -p "$corpus" "$build/findings" || return
    VARDEN_FUZZ_TARGET=$1 ASAN_OPTIONS=quarantine_size_mb=16 UBSAN_OPTIONS=print_stacktrace=1 \
        "$build/bin/varden_fuzz" "-max_total_time=$seconds" "-max_len=$longest" -rss_limit_mb=512 \
        -malloc_limit_mb=16 -timeout=300 -report_slow_units=300 -print_final_stats=1 \
        "-artifact_prefix=$build/findings/$1-" "$corpus" "${folders[@]}" >"$build/$1.log" 2>&1
}

# number PATTERN FILE: the last number behind the pattern.
number() {
    sed -nE "s/.*$1 *([0-9]+).*/\1/p" "$2" | tail -n 1
}

# tell TARGET CODE: its line of the table, and the end of its log when it has found something.
tell() {
    local log=$build/$1.log found=none
    [[ $2 -eq 0 ]] || found="see $log"
    printf '%-15s %12s %10s  %s\n' "$1" "$(number 'number_of_executed_units:' "$log")" \
        "$(number 'cov:' "$log")" "$found"
    [[ $2 -eq 0 ]] || grep -avE '^(INFO|#)|in fuzzer::|libc\.so' "$log" | tail -n 30
}

printf '%-15s %12s %10s  %s\n' target executions coverage findings
code=0
running=()
declare -A names=()
for target in "$@" ''; do
    while [[ ${#running[@]} -ge $jobs || (-z $target && ${#running[@]} -gt 0) ]]; do
        wait -n -p ended "${running[@]}"
        result=$?
        [[ $result -eq 0 ]] || code=1
        tell "${names[$ended]}" "$result"
        mapfile -t running < <(printf '%s\n' "${running[@]}" | grep -vx "$ended")
    done
    [[ -n $target ]] || break
    run_target "$target" &
    running+=($!)
    names[$!]=$target
done
exit "$code"
