#!/bin/sh
# Shows the class trees of the example models, and makes a page of them. Fails when a command fails.
set -eu

if [ $# -ne 2 ]; then
    echo "usage: $0 KORV-INSPECT PAGE" >&2
    exit 2
fi
inspect=$1
page=$2
models=$(dirname "$0")/yin

show() { # HEADING ARGUMENT...
    printf '\n=== %s\n' "$1"
    shift
    printf '$ korv-inspect %s\n\n' "$*"
    "$inspect" "$@"
}

show "Interfaces: nested lists, choices, and attributes of every type" \
    tree example-interfaces -d "$models"
show "Quality of service: lists with several keys, and a class that takes its ids from the one below it" \
    tree example-qos -d "$models"
show "Quality of service on interfaces: what two augments add to another module's tree" \
    tree example-interface-qos -d "$models"
show "Users: the deviations of quelvo-bras-user-manage-deviations-edge change a type, add a sample id and take a leaf away" \
    tree quelvo-bras-user-manage -d "$models"
show "One attribute of them, as a host asks for it" \
    find example-interface-qos /interfaces/interface/traffic/matched -d "$models"
show "All of them in one file for a browser" \
    page --all -d "$models" -o "$page"
printf 'The page: %s\nThe programs: %s\n' "$page" "$(dirname "$inspect")"
