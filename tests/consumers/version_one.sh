#!/bin/sh
# Configures the project as version 1.0.0, where only the major version decides what hosts can rely on.
# usage: version_one.sh PROJECT WORK
set -eu

project=$1 work=$2
fail() { echo "$*" >&2; exit 1; }

rm -rf "$work"
mkdir -p "$work/project"
for entry in "$project"/*; do
    ln -s "$entry" "$work/project/"
done
rm "$work/project/CMakeLists.txt"
sed 's/^\(project(korv_libyang VERSION\) [0-9.]*/\1 1.0.0/' "$project/CMakeLists.txt" >"$work/project/CMakeLists.txt"
cmake -S "$work/project" -B "$work/build" -DKORV_BUILD_TESTS=OFF -DKORV_BUILD_BENCH=OFF

grep -rqF 'libkorv_libyang.so.1.0.0' "$work/build" || fail "the library's file does not have the whole version"
grep -rqE 'soname,libkorv_libyang\.so\.1( |$)|SONAME = libkorv_libyang\.so\.1$' "$work/build" ||
    fail "the library's SONAME is not the major version"
grep -qF '"libkorv-libyang1"' "$work/build/CPackConfig.cmake" || fail "the runtime's package is not named after it"
grep -qF 'PACKAGE_FIND_VERSION_MAJOR STREQUAL CVF_VERSION_MAJOR' "$work/build/korv_libyangConfigVersion.cmake" ||
    fail "find_package does not accept every version of the same major number"
