# shellcheck shell=bash
# What the scripts that are tests share; sourced by them, never run.

# Ends a test that lacks a program: skipped, or failed where CONSOLIDATOR_REQUIRE_TOOLS is set, as
# scripts/test does once it has installed them all.
need() {
    local program
    for program in "$@"; do
        command -v "$program" >/dev/null && continue
        echo "missing: $program" >&2
        [[ -n ${CONSOLIDATOR_REQUIRE_TOOLS:-} ]] && exit 1
        exit 77
    done
}

# Ends a test that lacks what it takes to make a reader in Python of a .ksy description and to run it;
# $python is the interpreter that has the module. The compiler is where scripts/test installs it.
needPythonReader() {
    local project
    project=$(realpath "$(dirname "${BASH_SOURCE[0]}")/../..")
    # shellcheck disable=SC2034  # for the test
    python=/usr/bin/python3 # that of Debian, which has Debian's modules
    need node "$python"
    export NODE_PATH=$project/build/npm/node_modules
    [[ -d $NODE_PATH/kaitai-struct-compiler ]] || need kaitai-struct-compiler
    "$python" -c 'import kaitaistruct' 2>/dev/null || need python3-kaitaistruct
}

# Makes <folder>/bin/gdb, which is GDB as it is where the extension of a folder of shared data is
# installed: makeGdb <folder> <share folder>
makeGdb() {
    local program data
    need gdb
    program=$(command -v gdb)
    data=$("$program" -nx -batch -ex 'python import os; print(os.path.realpath(gdb.PYTHONDIR + "/.."))')
    cp --recursive --symbolic-link "$data" "$1/gdb-data"
    cp --recursive --remove-destination "$2/gdb/." "$1/gdb-data"
    mkdir -p "$1/bin"
    printf '#!/bin/sh\nexec %q --data-directory=%q "$@"\n' "$program" "$1/gdb-data" >"$1/bin/gdb"
    chmod +x "$1/bin/gdb"
}

# A new folder that is gone when the test ends.
temporaryFolder() {
    folder=$(mktemp --directory)
    # shellcheck disable=SC2064  # the folder as it is now
    trap "rm -rf '$folder'" EXIT
}

# Compares lines with what they must be, and counts where they differ in $failures.
failures=0
expectLines() {
    local name=$1 expected=$2 actual=$3
    if [[ $actual != "$expected" ]]; then
        echo "$name differs:" >&2
        diff --label expected --label actual -u <(echo "$expected") <(echo "$actual") >&2 || true
        failures=$((failures + 1))
    fi
}
