#!/bin/sh
# Two hosts by find_package: one with all pieces, one with layers of its own, which must not get ours.
# usage: cmake_hosts.sh WORK OWN-LAYERS
set -eu

work=$1 own_layers=$2
cmake -S "$(dirname "$0")/cmake_host" -B "$work/cmake_host" -DCMAKE_PREFIX_PATH="$work/moved" -DOWN_LAYERS="$own_layers"
cmake --build "$work/cmake_host"
"$work/cmake_host/whole_host" "$work/moved/share/doc/korv_libyang/examples/yin"
"$work/cmake_host/own_layers_host"
if readelf -d "$work/cmake_host/own_layers_host" | grep -E 'NEEDED.*(qxyang|korv_platform)'; then
    echo "a host with layers of its own was linked with ours" >&2
    exit 1
fi
