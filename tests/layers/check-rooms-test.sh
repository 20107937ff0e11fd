#!/usr/bin/env bash
# Proves that check-rooms.sh finds every list that differs.
# shellcheck disable=SC2016  # backticks are marks of the map's rows
set -euo pipefail
export LC_ALL=C

check=$(cd -- "$(dirname -- "${BASH_SOURCE[0]}")" && pwd)/check-rooms.sh
tree=$(mktemp -d)
trap 'rm -rf -- "$tree"' EXIT
failures=0

# lists ROOMS MAP FILTER: writes the three lists.
lists() {
    mkdir -p "$tree/cmake"
    printf '# rooms\n%s\n' "$1" >"$tree/cmake/rooms.txt"
    printf '## The map\n\n| Room | What it holds |\n|---|---|\n%s\n\n## Next\n| `nothing/` | |\n' "$2" >"$tree/HACKING.md"
    printf "HeaderFilterRegex: '/(%s)/[^ ]*\\.h\$'\n" "$3" >"$tree/.clang-tidy"
}

# expect NAME CODE WORDS...: runs the check; each of the words is in what it prints.
expect() {
    local name=$1 code=$2 got=0 report word
    report=$(bash "$check" "$tree" 2>&1) || got=$?
    [[ $got -eq $code ]] || { echo "FAILED: $name: exit code $got instead of $code" >&2; failures=$((failures + 1)); }
    for word in "${@:3}"; do
        [[ $report == *"$word"* ]] || { echo "FAILED: $name: \"$word\" is not in: $report" >&2; failures=$((failures + 1)); }
    done
}

rooms=$'model : :\nplatform/qt : model : toolkit'
map=$'| `model/` | a |\n| `platform/qt/` | b, in `tests/` too |'
lists "$rooms" "$map" 'model|platform'
expect "lists that agree" 0 "same rooms"
lists "$rooms" '| `model/` | a |' 'model|platform'
expect "a room that the map lacks" 1 "HACKING.md" "missing: platform/qt"
lists "$rooms" "$map"$'\n| `attic/` | c |' 'model|platform'
expect "a room of the map that is none" 1 "no room: attic"
lists "$rooms" "$map" 'model'
expect "a room that the filter lacks" 1 ".clang-tidy" "missing: platform"
lists "$rooms" "$map" 'model|platform|attic'
expect "a room of the filter that is none" 1 ".clang-tidy" "no room: attic"
lists "$rooms" "" 'model|platform'
expect "no map at all" 2 "no rooms in HACKING.md"

[[ $failures -eq 0 ]] || exit 1
echo "check-rooms-test: every difference was found"
