#!/bin/sh
# Installs a build into a staging directory, moves the tree to WORK/moved and looks at what cannot be seen by building hosts:
# nothing in it may name where it was built or meant to be.
# usage: install.sh BUILD WORK
set -eu

build=$1 work=$2
fail() { echo "$*" >&2; exit 1; }

rm -rf "$work"
mkdir -p "$work"
DESTDIR=$work/stage cmake --install "$build" --prefix /nowhere/korv >"$work/install.log"
mv "$work/stage/nowhere/korv" "$work/moved"
rest=$(find "$work/stage" ! -type d)
[ -z "$rest" ] || fail "installed outside of the prefix: $rest"

cd "$work/moved"
if grep -rIl -e /nowhere/korv -e "$build" .; then
    fail "the files above name a directory of the build or the prefix"
fi
for file in bin/* lib*/*.so lib*/*/*.so; do
    [ -e "$file" ] || continue
    # shellcheck disable=SC2016 # the linker's name
    if readelf -d "$file" | grep -E 'R(UN)?PATH' | grep -v '\[\$ORIGIN/'; then
        fail "$file has an absolute search path"
    fi
done

if [ -e bin/korv-inspect ]; then
    bin/korv-inspect tree example-qos -d share/doc/korv_libyang/examples/yin >/dev/null
    [ -s share/man/man1/korv-inspect.1 ] || fail "no manual page"
    [ -s share/bash-completion/completions/korv-inspect ] || fail "no completion"
fi
