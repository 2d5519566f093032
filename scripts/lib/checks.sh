# shellcheck shell=bash
# How scripts/test keeps count; sourced by it, never run.

passed=0 failed=0 skipped=0 summary=()
counts=$(mktemp)
trap 'rm -f "$counts"' EXIT

# check <name> <command>... - runs a command as a check, which is skipped where its status is 77, and
# goes on whatever becomes of it. It counts as one, unless it leaves in the file $counts how many of
# its own cases passed, failed and were skipped.
check() {
    local name=$1 status=0 started=$SECONDS cases
    shift
    step "$name"
    : >"$counts"
    set +e
    (set -e; "$@")
    status=$?
    set -e
    case $status in
    0) cases=(1 0 0) ;;
    77) cases=(0 0 1) ;;
    *) cases=(0 1 0) ;;
    esac
    [[ ! -s $counts ]] || read -ra cases <"$counts"
    [[ $status -eq 0 || $status -eq 77 || ${cases[1]} -gt 0 ]] || cases[1]=1
    passed=$((passed + cases[0]))
    failed=$((failed + cases[1]))
    skipped=$((skipped + cases[2]))
    summary+=("$(printf '%5d s  %s: %d passed, %d failed, %d skipped' $((SECONDS - started)) "$name" \
        "${cases[@]}")")
}

# How many cases of a run of ctest passed, failed and were skipped, by the report that it wrote. A
# program made with GoogleTest counts with its own cases, any other test as one.
countCases() {
    awk '
        function finish() {
            if (status == "fail" && !mine["FAILED"]) ++mine["FAILED"]
            if (status == "run" && !own) ++mine["PASSED"]
            if (status == "notrun") ++mine[refused ? "SKIPPED" : "FAILED"]
            for (kind in mine) all[kind] += mine[kind]
            split("", mine)
            own = refused = 0
        }
        match($0, /<testcase .* status="[a-z]+"/) {
            finish()
            status = substr($0, RSTART, RLENGTH - 1)
            sub(/.*"/, "", status)
        }
        /<skipped message="SKIP_RETURN_CODE=77"/ { refused = 1 }
        match($0, /^\[  (PASSED |SKIPPED|FAILED ) \] [0-9]+ tests?[.,]/) {
            split($0, words, /[^A-Za-z0-9]+/)
            mine[words[2]] += words[3]
            own = 1
        }
        END {
            finish()
            print all["PASSED"] + 0, all["FAILED"] + 0, all["SKIPPED"] + 0
        }' "$1"
}

# Prints what became of all checks; fails if one of them did.
summarise() {
    step "What was checked"
    printf '%s\n' "${summary[@]}"
    printf '\n%d passed, %d failed, %d skipped\n' "$passed" "$failed" "$skipped"
    [[ $failed -eq 0 ]]
}
