#!/bin/sh
# The installed examples as C and C++ hosts with nothing but a compiler and pkg-config, and every installed header by itself.
# usage: pkgconfig_host.sh WORK
set -eu

work=$1
moved=$work/moved
PKG_CONFIG_PATH=$(dirname "$(find "$moved" -name korv_libyang.pc)")
export PKG_CONFIG_PATH
flags=$($PKG_CONFIG --cflags korv_libyang)
strict="-Wall -Wextra -Wpedantic -Wshadow -Wconversion -Werror"

# shellcheck disable=SC2086 # one word a flag
find "$moved/include" -name '*.h' | while read -r header; do
    $CC -std=c11 $strict -fsyntax-only -x c $flags "$header"
    $CXX -std=c++17 $strict -fsyntax-only -x c++ $flags "$header"
done
# The C++ face, also where there are no exceptions.
# shellcheck disable=SC2086
find "$moved/include" -name '*.hpp' | while read -r header; do
    for language in -std=c++17 -std=c++20 "-std=c++17 -fno-exceptions"; do
        $CXX $language $strict -fsyntax-only -x c++ $flags "$header"
    done
done

examples=$moved/share/doc/korv_libyang/examples
for source in "$examples"/host_c/*.c; do
    # shellcheck disable=SC2046,SC2086
    $CC -std=c11 $strict "$source" -o "$work/$(basename "$source" .c)" \
        $($PKG_CONFIG --cflags --libs korv_libyang qxyang korv_platform)
done
for source in "$examples"/host_cpp/*.cpp; do
    # shellcheck disable=SC2046,SC2086
    $CXX -std=c++17 $strict "$source" -o "$work/$(basename "$source" .cpp)_cpp" \
        $($PKG_CONFIG --cflags --libs korv_libyang qxyang korv_platform)
done
libdir=$($PKG_CONFIG --variable=libdir korv_libyang)
export LD_LIBRARY_PATH="$libdir"
# RUN: an emulator and its options, or nothing
${RUN:-} "$work/first_host" "$examples/yin" | grep 'interface is class 0x1001'
for host in small complete; do
    ${RUN:-} "$work/${host}_host" "$examples/yin" >"$work/c_says"
    ${RUN:-} "$work/${host}_host_cpp" "$examples/yin" >"$work/cpp_says"
    cmp "$work/c_says" "$work/cpp_says"
done
