#!/bin/sh
# Installs a build into a staging directory, moves the tree to WORK/moved and looks at what cannot be seen by building hosts:
# nothing in it may name where it was built or meant to be.
# usage: install.sh BUILD WORK
set -eu

build=$1 work=$2
fail() { echo "$*" >&2; exit 1; }
# shellcheck disable=SC2086 # RUN: an emulator and its options, or nothing
inspect() { ${RUN:-} bin/korv-inspect "$@"; }

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

# The library alone finds its layers, whoever opens it; this machine's Python opens this machine's libraries.
cat >"$work/open.py" <<'END'
import ctypes, sys
lib = ctypes.CDLL(sys.argv[1])
lib.YANGLIB_Initial.restype = ctypes.c_void_p
instance = lib.YANGLIB_Initial(ctypes.c_uint64(1), ctypes.c_uint64(0), None, sys.argv[2].encode(), None)
assert lib.YANGLIB_LoadYangModule(ctypes.c_void_p(instance), b"example-qos", None) == 0
lib.YANGLIB_Uninitial(ctypes.c_void_p(instance))
END
library=$(find . -name libkorv_libyang.so)
[ -n "${RUN:-}" ] || env -u LD_LIBRARY_PATH python3 "$work/open.py" "$library" share/doc/korv_libyang/examples/yin ||
    fail "the library alone does not find its layers"

if [ -e lib/python3/dist-packages/korv ]; then
    env -u LD_LIBRARY_PATH PYTHONDONTWRITEBYTECODE=1 PYTHONPATH=lib/python3/dist-packages \
        "$(command -v /usr/bin/python3 || echo python3)" -c 'import korv
assert korv.Context("share/doc/korv_libyang/examples/yin").load("example-qos").attributes' || fail "no package korv"
fi

if [ -e bin/korv-inspect ]; then
    inspect tree example-qos -d share/doc/korv_libyang/examples/yin >/dev/null
    # The extension module is found without being told, and a file of a registered directory wins over it.
    mkdir "$work/models"
    cp share/doc/korv_libyang/examples/yin/example-types.yin share/doc/korv_libyang/examples/yin/example-interfaces.yin \
        "$work/models"
    inspect tree "$work/models/example-interfaces.yin" | grep -q 'class' || fail "no class without -d"
    echo '<module/>' >"$work/models/quelvo-mim-extensions.yin"
    if inspect tree "$work/models/example-interfaces.yin" >/dev/null 2>"$work/error"; then
        fail "the installed module won over the file beside the model"
    fi
    grep -q 'models/quelvo-mim-extensions.yin:1:' "$work/error" || fail "$(cat "$work/error")"
    [ -s share/korv-inspect/schemas/tree.schema.json ] || fail "no schemas of the JSON"
    [ -s share/man/man1/korv-inspect.1 ] || fail "no manual page"
    for completion in bash-completion/completions/korv-inspect zsh/vendor-completions/_korv-inspect \
        fish/vendor_completions.d/korv-inspect.fish; do
        [ -s "share/$completion" ] || fail "no share/$completion"
    done
fi
