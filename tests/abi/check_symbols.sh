#!/bin/sh
# The binary interface of the library: it exports the listed symbols and no others, and needs only what the contract header
# declares and the C and C++ runtimes give.
# usage: check_symbols.sh LIBRARY LIST CONTRACT-HEADER   (UPDATE_SYMBOLS=1 rewrites the list)
set -eu

library=$1 list=$2 header=$3
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

"$NM" -D --defined-only "$library" | awk '{print $3}' | grep -vE "^(__odr_asan|__gcov_|mangle_path$)" | LC_ALL=C sort >"$work/exported"
if [ -n "${UPDATE_SYMBOLS:-}" ]; then
    cp "$work/exported" "$list"
fi
diff -u "$list" "$work/exported" || {
    echo "the exported symbols are not those of $list" >&2
    exit 1
}

# Names in front of an opening bracket, and the one variable.
grep -oE '[A-Za-z_0-9]+\(|g_aucZorMemPt' "$header" | tr -d '(' | LC_ALL=C sort -u >"$work/contract"
# Symbols with a version come from the runtimes; the others below belong to the linker and to instrumentation, which has
# functions of the C library for its own.
"$NM" -D --undefined-only "$library" | awk '{print $NF}' | grep -v '@' |
    grep -vE '^((mem|str)[a-z]+$|_ITM_|__gmon_start__|__cxa_|__asan_|__ubsan_|__tsan_|__sanitizer_|__gcov_|__llvm_)' |
    LC_ALL=C sort -u >"$work/needed"
LC_ALL=C comm -23 "$work/needed" "$work/contract" >"$work/foreign"
if [ -s "$work/foreign" ]; then
    echo "needed, but neither of the contract nor of the runtimes:" >&2
    cat "$work/foreign" >&2
    exit 1
fi
