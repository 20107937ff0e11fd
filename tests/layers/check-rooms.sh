#!/usr/bin/env bash
# Checks that whatever lists the rooms lists those of cmake/rooms.txt: the map in HACKING.md and the
# headers that clang-tidy looks into.
#
#   check-rooms.sh [ROOT]         ROOT: the tree to check, by default the one this script is in
#
# Prints what differs and exits with 1; with 2 when a list is not there.
# shellcheck disable=SC2016  # backticks are marks of the map's rows
set -euo pipefail
export LC_ALL=C

cd -- "${1:-$(dirname -- "${BASH_SOURCE[0]}")/../..}" || exit 2
failures=0

# same NAME EXPECTED GOT: two lists, a room a line.
same() {
    if [[ -z $3 ]]; then
        echo "check-rooms: no rooms in $1" >&2
        exit 2
    fi
    if ! diff <(sort <<<"$2") <(sort <<<"$3") >/dev/null; then
        echo "$1 and cmake/rooms.txt differ:"
        diff <(sort <<<"$2") <(sort <<<"$3") | sed -n 's/^< /  missing: /p; s/^> /  no room: /p'
        failures=$((failures + 1))
    fi
}

rooms=$(sed -n 's|^\([a-z][a-z/]*\) *:.*|\1|p' cmake/rooms.txt)

# The map's rows: | `room/` | ... ; a row may speak of several rooms.
same HACKING.md "$rooms" \
    "$(sed -n '/^## The map/,/^## [^T]/p' HACKING.md | grep '^| `' | cut -d'|' -f2 |
        grep -o '`[a-z/]*/`' | tr -d '`' | sed 's|/$||')"

same .clang-tidy "$(cut -d/ -f1 <<<"$rooms" | sort -u)" \
    "$(sed -n "s/^HeaderFilterRegex: '\/(\([a-z|]*\)).*/\1/p" .clang-tidy | tr '|' '\n')"

[[ $failures -eq 0 ]] || exit 1
echo "check-rooms: every list has the same rooms"
