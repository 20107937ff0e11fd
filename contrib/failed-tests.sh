#!/usr/bin/env bash
# Tells which tests failed when CTest last ran in a build folder, and the end of what each printed.
#
#   contrib/failed-tests.sh BUILD-FOLDER [LINES]    so many lines of each; 30 if not said
#
# Prints nothing when none failed. Of very many, the first twenty are shown.
set -euo pipefail

readonly most=20
logs=$1/Testing/Temporary
[[ -s $logs/LastTestsFailed.log ]] || exit 0

awk -v limit="${2:-30}" -v most="$most" '
    # "12:Suite.Name" a line.
    FNR == NR { sub(/^[0-9]+:/, ""); failed[$0]; total++; next }

    # One test: its name, what it printed, its time.
    name == "" && match($0, /^[0-9]+\/[0-9]+ Test: /) {
        name = substr($0, RLENGTH + 1)
        end = "\"" name "\" time elapsed: "
        wanted = name in failed
        count = 0
        next
    }
    name != "" && index($0, end) == 1 {
        if (wanted && ++shown <= most) show()
        name = ""
        next
    }
    name != "" && wanted && $0 !~ /^(Command: |Directory: |Output:$|Test Failed\.$|-+$|".*" (start|end) time: )/ {
        lines[count++] = $0
    }

    function show(    i) {
        printf "\n--- %s failed\n", name
        if (count > limit) printf "(%d lines before)\n", count - limit
        for (i = count > limit ? count - limit : 0; i < count; i++) print lines[i]
    }
    END {
        if (shown > most) printf "\n--- and %d more that failed\n", shown - most
        if (shown < total) printf "\n--- of %d that failed %d did not even begin\n", total, total - shown
    }' "$logs/LastTestsFailed.log" "$logs/LastTest.log"
