#!/usr/bin/env bash
# Writes a changelog of ours (docs/CHANGELOG.md tells its form) in Debian's form.
#
#   debian-changelog.sh PACKAGE MAINTAINER FILE
set -euo pipefail

package=$1
maintainer=$2
file=$3
day=
change=

# The end of a change, when there is one: Debian's lines are shorter than ours.
finish_change() {
    [[ -z $change ]] || fmt --width=74 <<<"$change" | sed '1s/^/  * /; 1!s/^/    /'
    change=
}

# The end of a version, when there is one.
finish_version() {
    finish_change
    [[ -z $day ]] || printf '\n -- %s  %s\n\n' "$maintainer" "$(LC_ALL=C date -u -R -d "$day")"
}

while IFS= read -r line; do
    if [[ $line =~ ^'## '([0-9.]+)' ('([0-9-]+)')'$ ]]; then
        finish_version
        day=${BASH_REMATCH[2]}
        printf '%s (%s) bookworm; urgency=medium\n\n' "$package" "${BASH_REMATCH[1]}"
    elif [[ -z $day ]]; then
        :  # what stands before the first version
    elif [[ $line == '- '* ]]; then
        finish_change
        change=${line#- }
    elif [[ $line == '  '* && -n $change ]]; then
        change+=" ${line#  }"
    elif [[ -n $line ]]; then
        echo "$file: neither a version nor a change: $line" >&2
        exit 1
    fi
done <"$file"
if [[ -z $day ]]; then
    echo "$file: no version" >&2
    exit 1
fi
finish_version
