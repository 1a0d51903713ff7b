#!/bin/sh
# Installs the Debian packages of a directory on this system, uses them, and removes them again; nothing of them may be left.
# Needs root.
# usage: packages.sh DIRECTORY
set -eu

dir=$(cd "$1" && pwd)
packages=$(for file in "$dir"/*.deb; do dpkg-deb --field "$file" Package; done)
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT

for file in "$dir"/*.deb; do
    dpkg-deb --info "$file"
done
apt-get install -q -y --no-install-recommends "$dir"/*.deb
# shellcheck disable=SC2086 # one word a package
dpkg -L $packages | while read -r file; do [ -d "$file" ] || echo "$file"; done >"$work/files"
[ -s "$work/files" ]

for package in $packages; do
    grep -q licence "/usr/share/doc/$package/copyright"
done

examples=/usr/share/doc/korv_libyang/examples
korv-inspect --version
korv-inspect tree example-qos -d $examples/yin
# shellcheck disable=SC2046
cc $examples/host_c/first_host.c -o "$work/first_host" $(pkg-config --cflags --libs korv_libyang qxyang korv_platform)
"$work/first_host" $examples/yin
python3 -c 'import ctypes; print(hex(ctypes.CDLL("libkorv_libyang.so.0.1").YANGLIB_GetLibVersion()))'
# shellcheck disable=SC2046
c++ -std=c++17 $examples/host_cpp/small_host.cpp -o "$work/small_host" \
    $(pkg-config --cflags --libs korv_libyang qxyang korv_platform)
"$work/small_host" $examples/yin
/usr/bin/python3 -c "import korv; print(korv.Context('$examples/yin').load('example-qos').attributes[0])"

# shellcheck disable=SC2086
dpkg --remove $packages
while read -r file; do
    [ ! -e "$file" ] || { echo "left behind: $file" >&2; exit 1; }
done <"$work/files"
if ldconfig -p | grep korv; then
    echo "the run-time linker still knows the library" >&2
    exit 1
fi
[ -z "$(dpkg --audit)" ]
