# shellcheck shell=bash
# Loaded by every test of the trash host: each runs in a folder of its own, with a home folder and some files.

bats_require_minimum_version 1.5.0
bats_load_library bats-support
bats_load_library bats-assert
bats_load_library bats-file
# shellcheck source=scripts/trash-database.sh
source "$TRASH_DATABASE"

setup() {
    export HOME=$BATS_TEST_TMPDIR/home
    trash="$HOME/Library/Application Support/Tolvex Studio 10/Trash"
    mkdir -p "$HOME" "$BATS_TEST_TMPDIR/files"
    cd "$BATS_TEST_TMPDIR/files"
    mkdir -p Song/Audio
    echo "a take" >take.wav
    echo "a bass" >Song/Audio/bass.wav
}

teardown() {
    chmod -R u+rwX "$BATS_TEST_TMPDIR" # so that what a test has locked can be removed
}

trash-host() {
    "$TRASH_HOST" "$@"
}

# A command has to fail with one line that contains the reason, and must leave every file as it was.
assert_refused() { # reason command...
    local reason=$1 before
    shift
    before=$(files)
    run --separate-stderr "$@"
    assert_failure 1
    assert_equal "${#stderr_lines[@]}" 1
    output=$stderr assert_output --partial "$reason"
    assert_equal "$(files)" "$before"
}

# Lists the test's files with the sums of their contents, but for the times of folders.
files() {
    find "$BATS_TEST_TMPDIR/files" "$HOME" -printf '%p %M %l\n' | sort
    find "$BATS_TEST_TMPDIR/files" "$HOME" -type f -readable -exec cksum {} + | sort
}
