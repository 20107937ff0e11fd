#!/usr/bin/env bash
# Proves that .ci/run ends with what has to be known of a failure: which step, which of its tests, and
# the end of what each printed.
#
#   ci-run-test.sh SOURCE-TREE CTEST
set -euo pipefail
export LC_ALL=C

source_tree=$1
ctest=$2
tree=$(mktemp -d)
trap 'rm -rf -- "$tree"' EXIT
failures=0

# expect NAME CODE: runs the steps "test" and "scripts"; its report is in $report.
expect() {
    local code=0
    report=$(bash "$tree/.ci/run" test scripts 2>&1) || code=$?
    [[ $code -eq $2 ]] || fail "$1: exit code $code instead of $2"
    report=$(sed -n '/^test .* s$/,$p' <<<"$report")
}

fail() {
    echo "FAILED: $1" >&2
    echo "${report-}" >&2
    failures=$((failures + 1))
}

# has, lacks TEXT: a whole line of the report behind the times of the steps.
has() { grep -qFx -- "$1" <<<"$report" || fail "not told: $1"; }
lacks() { ! grep -qFx -- "$1" <<<"$report" || fail "told: $1"; }

# before FIRST SECOND: in this order, at first.
before() {
    local order
    order=$(grep -nFx -m 1 -- "$1" <<<"$report" | cut -d : -f 1)
    [[ $order -lt $(grep -nFx -m 1 -- "$2" <<<"$report" | cut -d : -f 1) ]] || fail "$1 is not before $2"
}

# The real script, with steps whose work is small. Its tests are CTest's own, with all their marks.
mkdir -p "$tree/.ci" "$tree/contrib" "$tree/build/dev" "$tree/build/asan/Testing/Temporary" "$tree/bin"
cp "$source_tree/.ci/run" "$tree/.ci/run"
cp "$source_tree/contrib/failed-tests.sh" "$tree/contrib/"
cat >"$tree/contrib/packages.sh" <<'SCRIPT'
packages_build=() packages_test=() packages_checks=() packages_sanitizers=()
install_packages() { :; }
SCRIPT
cat >"$tree/bin/shellcheck" <<'SCRIPT'
#!/bin/sh
for i in 1 2 3; do echo "remark $i"; done
exit "$(cat scripts-code)"
SCRIPT
cat >"$tree/test" <<SCRIPT
#!/bin/sh
"$ctest" --test-dir build/dev -j 4 --output-on-failure
code=\$?
for i in \$(seq 40); do echo "behind the tests \$i"; done
exit \$code
SCRIPT
chmod +x "$tree/bin/shellcheck" "$tree/test"
export PATH=$tree/bin:$PATH
echo 0 >"$tree/scripts-code"

cat >"$tree/build/dev/CTestTestfile.cmake" <<'TESTS'
add_test(Passes sh -c "echo fine")
add_test(Long sh -c "for i in $(seq 100); do echo long $i; done; exit 1")
add_test(Short/0 sh -c "echo Command: any; echo short; echo ----; exit 1")
add_test(Hangs sh -c "echo begun; exec sleep 60")
set_tests_properties(Hangs PROPERTIES TIMEOUT 1)
TESTS
# Of an earlier run.
echo "1:Old" >"$tree/build/asan/Testing/Temporary/LastTestsFailed.log"
touch "$tree/build/asan/Testing/Temporary/LastTest.log"

expect "tests that fail" 1
has "=== test failed; the end of what it printed:"
has "behind the tests 11"
lacks "behind the tests 10"
has "--- Long failed"
has "long 100"
has "long 73"
lacks "long 40"
has "--- Short/0 failed"
has "short"
has "--- Hangs failed"
has "begun"
lacks "fine"
lacks "--- Passes failed"
lacks "--- Old failed"
lacks "remark 1"
before "=== test failed; the end of what it printed:" "--- Long failed"
[[ $(tail -n 1 <<<"$report") == "Failed: test" ]] || fail "the last line"

# A later step's failure is told behind the earlier one's; the tests are not its own.
echo 1 >"$tree/scripts-code"
expect "two steps that fail" 1
has "=== scripts failed; the end of what it printed:"
has "remark 1"
before "--- Long failed" "=== scripts failed; the end of what it printed:"
[[ $(grep -cFx -- "--- Long failed" <<<"$report") -eq 1 ]] || fail "told twice"
[[ $(tail -n 1 <<<"$report") == "Failed: test scripts" ]] || fail "the last line"

# Of very many only the first.
for i in {1..30}; do
    echo "add_test(Many$i sh -c \"echo many; exit 1\")"
done >"$tree/build/dev/CTestTestfile.cmake"
expect "many tests that fail" 1
[[ $(grep -cFx many <<<"$report") -eq 20 ]] || fail "not twenty of many"
has "--- and 10 more that failed"

# Nothing of all that when everything passes.
echo 'add_test(Passes sh -c "echo fine")' >"$tree/build/dev/CTestTestfile.cmake"
echo 0 >"$tree/scripts-code"
expect "everything passes" 0
[[ $(wc -l <<<"$report") -eq 3 ]] || fail "more than the times and a word"

[[ $failures -eq 0 ]] || exit 1
echo "Every failure is told at the end."
