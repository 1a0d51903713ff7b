#!/bin/sh
# The installed examples as a C host with nothing but a compiler and pkg-config, and every installed header by itself.
# usage: pkgconfig_host.sh WORK
set -eu

work=$1
moved=$work/moved
PKG_CONFIG_PATH=$(dirname "$(find "$moved" -name korv_libyang.pc)")
export PKG_CONFIG_PATH
flags=$($PKG_CONFIG --cflags korv_libyang)
strict="-Wall -Wextra -Wpedantic -Werror"

# shellcheck disable=SC2086 # one word a flag
find "$moved/include" -name '*.h' | while read -r header; do
    $CC -std=c11 $strict -fsyntax-only -x c $flags "$header"
    $CXX -std=c++17 $strict -fsyntax-only -x c++ $flags "$header"
done

examples=$moved/share/doc/korv_libyang/examples
for source in "$examples"/host_c/*.c; do
    # shellcheck disable=SC2046,SC2086
    $CC -std=c11 $strict "$source" -o "$work/$(basename "$source" .c)" \
        $($PKG_CONFIG --cflags --libs korv_libyang qxyang korv_platform)
done
libdir=$($PKG_CONFIG --variable=libdir korv_libyang)
LD_LIBRARY_PATH=$libdir "$work/first_host" "$examples/yin" | grep 'interface is class 0x1001'
