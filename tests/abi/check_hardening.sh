#!/bin/sh
# What KORV_HARDEN asks of the compiler and the linker is in the finished libraries and programs.
# usage: check_hardening.sh FILE...
set -eu

fail() { echo "$*" >&2; exit 1; }
has() { # FILE WHAT PATTERN READELF-OPTION...
    file=$1 what=$2 pattern=$3
    shift 3
    readelf -W "$@" "$file" | grep -qE "$pattern" || fail "$file: $what"
}

for file in "$@"; do
    has "$file" "can only run at one address" 'Type: +DYN' --file-header
    has "$file" "no table is made read-only" GNU_RELRO --program-headers
    has "$file" "functions are looked up when first called" 'BIND_NOW|Flags:.* NOW' --dynamic
    case $file in *libkorv_layers*) continue ;; esac # it has no function
    has "$file" "no stack is protected" ' __stack_chk_(fail|guard)' --dyn-syms
done
# Not each file has a call that these can check.
for guard in 'copies whose bounds are checked: __[a-z]+_chk[ @]' 'containers whose bounds are checked: __glibcxx_assert_fail'; do
    readelf -W --dyn-syms "$@" | grep -qE "${guard#*: }" || fail "no ${guard%%: *} in: $*"
done
