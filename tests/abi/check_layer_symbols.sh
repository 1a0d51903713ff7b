#!/bin/sh
# The schema layer exports what its headers declare, and no other function.
# usage: check_layer_symbols.sh LIBRARY HEADER...
set -eu

library=$1
shift
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$NM" -D --defined-only "$library" | awk '{print $3}' | grep -vE "^(__odr_asan|__gcov_|mangle_path$)" | LC_ALL=C sort >"$work/exported"
grep -hoE '\b(QY|QXYANG)_[A-Za-z_]+\(' "$@" | tr -d '(' | LC_ALL=C sort -u >"$work/declared"
diff -u "$work/declared" "$work/exported" || {
    echo "the exported symbols are not those that the headers declare" >&2
    exit 1
}
