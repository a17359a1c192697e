load helpers

@test "a file comes back with its contents, and the trash forgets it" {
    trash-host put take.wav
    run trash-host restore take.wav
    assert_output "take.wav  ->  $PWD/take.wav"
    assert_file_contains take.wav "a take"
    assert_equal "$(ls -A "$trash")" .trash.db
    assert_refused "it is not recorded in the trash" trash-host restore take.wav
}

@test "a folder comes back with all that it holds" {
    cp -R Song copy
    trash-host put Song
    trash-host restore Song
    diff -r Song copy
}

@test "an item is restored by its full path in the trash" {
    trash-host put take.wav
    trash-host restore "$trash/take.wav"
    assert_file_contains take.wav "a take"
}

@test "restore refuses to replace what has taken the place" {
    trash-host put take.wav
    echo new >take.wav
    assert_refused "something else is at $PWD/take.wav" trash-host restore take.wav
}

@test "restore refuses to replace a link that leads nowhere" {
    trash-host put take.wav
    ln -s nowhere take.wav
    assert_refused "something else is at $PWD/take.wav" trash-host restore take.wav
}

@test "restore keeps an item whose folder is gone" {
    trash-host put Song/Audio/bass.wav
    rmdir Song/Audio
    assert_refused "the folder $PWD/Song/Audio/ is gone" trash-host restore bass.wav
}

@test "restore keeps an item if the trash may not be changed" {
    trash-host put take.wav
    chmod 555 "$trash"
    assert_refused "Permission denied" trash-host restore take.wav
}

@test "restore refuses an item that has vanished" {
    trash-host put take.wav
    rm "$trash/take.wav"
    assert_refused "it has vanished from the trash" trash-host restore take.wav
}

@test "restore refuses records of anything but the trash's own items" {
    mkdir -p "$trash"
    database "$trash" ../Trash 1 "$PWD/x" .trash.db 1 "$PWD/x" "$PWD/take.wav" 1 "$PWD/x" >"$trash/.trash.db"
    assert_refused "it is not an item of this trash" trash-host restore ../Trash
    assert_refused "it is not an item of this trash" trash-host restore .trash.db
    assert_refused "it is not an item of this trash" trash-host restore "$PWD/take.wav"
}

@test "restore refuses an item of which nobody knows where it came from" {
    mkdir -p "$trash"
    echo "a stray" >"$trash/stray"
    trash-host purge
    assert_refused "the trash database does not" trash-host restore stray
}
