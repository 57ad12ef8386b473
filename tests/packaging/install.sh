#!/usr/bin/env bash
# Installs a build into an empty prefix. Nothing there may name the folders it came from, debug
# information aside, whose business they are.
set -euo pipefail
build=$1 prefix=$2 source=$3

rm -rf "$prefix"
cmake --install "$build" --prefix "$prefix" --strip
if grep -rlF -e "$source" -e "$build" "$prefix"; then
    echo "these files name the folders they were built in" >&2
    exit 1
fi
