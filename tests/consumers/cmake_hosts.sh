#!/bin/sh
# Hosts by find_package: one with all pieces, and two with layers of their own, which must not get ours.
# usage: cmake_hosts.sh WORK OWN-LAYERS
set -eu

work=$1 own_layers=$2
# RUN: an emulator and its options, or nothing
cmake -S "$(dirname "$0")/cmake_host" -B "$work/cmake_host" -DCMAKE_PREFIX_PATH="$work/moved" -DOWN_LAYERS="$own_layers"
cmake --build "$work/cmake_host"
${RUN:-} "$work/cmake_host/whole_host" "$work/moved/share/doc/korv_libyang/examples/yin"
mkdir -p "$work/alone"
cp -P "$(dirname "$(find "$work/moved" -name libkorv_libyang.so)")"/libkorv_libyang.so* "$work/alone"
for host in own_layers_host own_shared_layers_host; do
    ${RUN:-} "$work/cmake_host/$host" # beside our layers, which the library may load and which must not win
    LD_LIBRARY_PATH=$work/alone ${RUN:-} "$work/cmake_host/$host"
    if readelf -d "$work/cmake_host/$host" | grep -E 'NEEDED.*(qxyang|korv_platform)'; then
        echo "$host, which has layers of its own, was linked with ours" >&2
        exit 1
    fi
done
# Linked where there is nothing but the library.
# shellcheck disable=SC2086 # a compiler and its options
$CC -I "$work/moved/include" "$own_layers"/*.c -L "$work/alone" -lkorv_libyang -Wl,-rpath,"$work/alone" -o "$work/alone/host"
${RUN:-} "$work/alone/host"
