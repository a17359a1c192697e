load helpers

@test "purge deletes what came more than 30 days ago and keeps what came 29 days ago" {
    trash-host put take.wav Song/Audio/bass.wav
    database "$trash" take.wav "$(days_ago 31)" /x bass.wav "$(days_ago 29)" /y >"$trash/.trash.db"
    run trash-host purge
    assert_line "gone   take.wav"
    assert_line "stays  bass.wav, days left: 1"
    assert_not_exists "$trash/take.wav"
    assert_file_contains "$trash/bass.wav" "a bass"
}

@test "purge deletes a folder with the first of its files that is due" {
    trash-host put Song
    database "$trash" Song/Audio/bass.wav "$(days_ago 31)" "" >"$trash/.trash.db"
    run trash-host purge
    assert_output "gone   Song"
    assert_not_exists "$trash/Song"
}

@test "a folder that is put again is not purged by the dates of its last stay" {
    trash-host put Song
    database "$trash" Song "$(days_ago 31)" "$PWD/Song" Song/Audio/bass.wav "$(days_ago 31)" "" >"$trash/.trash.db"
    trash-host restore Song
    trash-host put Song
    run trash-host purge
    assert_output "stays  Song, days left: 30"
    assert_file_contains "$trash/Song/Audio/bass.wav" "a bass"
}

@test "purge records a stray file, and keeps it for 30 days" {
    mkdir -p "$trash"
    echo "a stray" >"$trash/stray"
    run trash-host purge
    assert_output "stays  stray, days left: 30"
    run trash-host list
    assert_line --regexp "UTC  stray  <-  not known$"
}

@test "purge of all deletes all items" {
    trash-host put take.wav Song
    trash-host purge --all
    assert_equal "$(ls -A "$trash")" .trash.db
}

@test "purge refuses while a folder holds a link to a folder, which it would empty" {
    trash-host put Song
    mkdir kept
    ln -s "$PWD/kept" "$trash/Song/link"
    assert_refused "is a link to a folder" trash-host purge --all
}

@test "purge refuses a trash that may not be changed" {
    trash-host put take.wav
    chmod 555 "$trash"
    assert_refused "may not be changed: Permission denied" trash-host purge --all
}
