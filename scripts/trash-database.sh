# shellcheck shell=bash
# Sourced by scripts/demo and scripts/check-demo: writes what docs/trash-database.md describes.

little_endian() { # bytes value...
    local bytes=$1 value i
    shift
    for value in "$@"; do
        # shellcheck disable=SC2059
        for ((i = 0; i < bytes; i++)); do printf "\\x$(printf %02x $(((value >> (8 * i)) & 255)))"; done
    done
}

days_ago() { echo $((($(date +%s) + 11644473600 - $1 * 86400) * 10000000)); }

database() { # trash (name added origin)...
    local trash=$1 key
    shift
    little_endian 4 2 $(($# / 3))
    while [[ $# -gt 0 ]]; do
        [[ $1 == /* ]] && key=$1 || key=$trash/$1
        little_endian 4 $((${#key} + 1)) && printf '%s\0' "$key"
        little_endian 8 "$2" && little_endian 4 $((${#3} + 1)) && printf '%s\0' "$3"
        shift 3
    done
}
