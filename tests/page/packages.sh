#!/bin/sh
# Installs the packages of the lock file into a folder, unless they are there: packages.sh SOURCE FOLDER
set -eu
cd "$2"
if [ -d node_modules ] && cmp -s "$1/package-lock.json" package-lock.json; then
    exit 0
fi
rm -rf node_modules package-lock.json
cp "$1/package.json" "$1/package-lock.json" .
npm ci --no-audit --no-fund --ignore-scripts || {
    rm -f package-lock.json
    echo "$0: npm cannot install what package-lock.json names" >&2
    exit 1
}
