load helpers

@test "list shows when an item came and from where" {
    trash-host put take.wav
    run trash-host list
    assert_line --regexp "^$(date -u +%Y-%m-%d) [0-9:]{8} UTC  take.wav  <-  $PWD/take.wav$"
}

@test "list shows what is not recorded" {
    mkdir -p "$trash"
    echo "a stray" >"$trash/stray"
    run trash-host list
    assert_line --regexp "^not recorded  *stray  <-  not known$"
}

@test "list shows no files in folders" {
    trash-host put Song
    trash-host purge
    run trash-host list
    refute_output --partial bass.wav
}

@test "list shows control characters as numbers" {
    local name=$'line\nend \e[31m'
    echo "a take" >"$name"
    trash-host put "$name"
    run trash-host list
    assert_output --partial 'line\x0aend \x1b[31m'
}

@test "list without a trash creates nothing" {
    run trash-host list
    assert_success
    assert_equal "${#lines[@]}" 1
    assert_not_exists "$trash"
}

@test "list refuses a database that may not be read" {
    trash-host put take.wav
    chmod 000 "$trash/.trash.db"
    assert_refused "$trash/.trash.db may not be read: Permission denied" trash-host list
}
