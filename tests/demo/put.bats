load helpers

@test "a file goes into the trash with its contents" {
    trash-host put take.wav
    assert_not_exists take.wav
    assert_file_contains "$trash/take.wav" "a take"
}

@test "a folder goes into the trash with all that it holds" {
    trash-host put Song/
    assert_not_exists Song
    assert_file_contains "$trash/Song/Audio/bass.wav" "a bass"
}

@test "a link goes into the trash and its target stays" {
    ln -s take.wav link
    trash-host put link
    assert_link_exists "$trash/link"
    assert_file_contains take.wav "a take"
}

@test "an item whose name is taken in the trash gets a number" {
    trash-host put take.wav
    echo "another take" >take.wav
    run trash-host put take.wav
    assert_output "take1.wav  <-  $PWD/take.wav"
    assert_file_contains "$trash/take.wav" "a take"
    assert_file_contains "$trash/take1.wav" "another take"
}

@test "put refuses all if one item is missing" {
    assert_refused "$PWD/missing: it is not the full path of an existing file" trash-host put take.wav missing
}

@test "put refuses the working directory and the root" {
    assert_refused "it is not the full path" trash-host put take.wav .
    assert_refused "it is not the full path" trash-host put take.wav /
}

@test "put refuses the folder in which the trash lies" {
    trash-host put take.wav
    assert_refused "$HOME: it cannot be moved" trash-host put "$HOME"
}

@test "put refuses what is in the trash" {
    trash-host put take.wav
    assert_refused "it is there already" trash-host put "$trash/take.wav"
}

@test "put refuses what is neither a file nor a folder" {
    mkfifo pipe
    assert_refused "it is neither a file nor a folder" trash-host put pipe
}

@test "put refuses a folder that holds a link to a folder, which a purge would empty" {
    mkdir "Other song"
    ln -s ../Song "Other song/link"
    assert_refused "is a link to a folder" trash-host put "Other song"
}

@test "put refuses an item together with one that it holds" {
    assert_refused "it would go with another item" trash-host put Song Song/Audio/bass.wav
}

@test "put refuses a file that would replace the trash database" {
    trash-host put take.wav
    echo "not a database" >.trash.db
    assert_refused "it would replace $trash/.trash.db" trash-host put .trash.db
}

@test "put leaves a file in a folder that may not be changed" {
    trash-host put take.wav
    chmod 555 Song/Audio
    assert_refused "Permission denied" trash-host put Song/Audio/bass.wav
}

@test "put leaves a file if the trash may not be changed" {
    trash-host put Song
    chmod 555 "$trash"
    assert_refused "Permission denied" trash-host put take.wav
}

@test "put leaves a file if the trash is a file" {
    mkdir -p "$(dirname "$trash")"
    echo "a file" >"$trash"
    assert_refused "$PWD/take.wav: " trash-host put take.wav
}

@test "eight items that are put at once all arrive and are recorded" {
    local number pids=()
    for number in 1 2 3 4 5 6 7 8; do
        mkdir "$number"
        echo "$number" >"$number/new.wav"
        trash-host put "$number/new.wav" &
        pids+=($!)
    done
    wait "${pids[@]}"
    assert_equal "$(cat "$trash"/new*.wav | sort | tr -d '\n')" 12345678
    assert_equal "$(trash-host list | grep -c "/new.wav$")" 8
}
