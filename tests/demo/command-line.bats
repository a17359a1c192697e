load helpers

@test "a damaged database stops every command and stays as it is" {
    local size
    trash-host put take.wav Song/Audio/bass.wav
    size=$(stat -c %s "$trash/.trash.db")
    truncate --size=$((size - 1)) "$trash/.trash.db"
    assert_refused "$trash/.trash.db is damaged" trash-host list
    assert_refused "$trash/.trash.db is damaged" trash-host put Song
    assert_refused "$trash/.trash.db is damaged" trash-host restore take.wav
    assert_refused "$trash/.trash.db is damaged" trash-host purge --all
}

@test "a database that is a folder stops every command" {
    mkdir -p "$trash/.trash.db"
    assert_refused "$trash/.trash.db is not a file" trash-host put take.wav
    assert_refused "$trash/.trash.db is not a file" trash-host purge --all
}

@test "an unknown command is not understood" {
    run trash-host lsit
    assert_failure 2
}

@test "put and restore need an argument" {
    run trash-host put
    assert_failure 2
    assert_output --partial "PATH is required"
    run trash-host restore
    assert_failure 2
    assert_output --partial "ITEM is required"
}

@test "the name of a command may be that of a file" {
    echo "a file" >purge
    trash-host put ./purge
    assert_file_contains "$trash/purge" "a file"
}

@test "the version is shown" {
    run trash-host --version
    assert_output --regexp '^trash-host [0-9]+\.[0-9]+\.[0-9]+$'
}
