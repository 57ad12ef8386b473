#!/usr/bin/env bash
# Makes the packages and looks into them.
set -euo pipefail
cpack=$1 build=$2 folder=$3

rm -rf "$folder"
mkdir -p "$folder/root"
"$cpack" --config "$build/CPackConfig.cmake" -B "$folder"

for package in "$folder"/*.deb; do
    [[ -e $package ]] || continue
    dpkg-deb --info "$package"
    dpkg-deb --extract "$package" "$folder/root"
done
for package in "$folder"/*.zip; do
    [[ -e $package ]] || continue
    (cd "$folder/root" && cmake -E tar xf "$package")
done

for file in dorvale/dorvale.h dorvale/datamanager.h dorvale/export.h DorvaleConfig.cmake dorvale.pc \
    '*Dorvale*.so.1 Dorvale.dll' '*DataManager*.so.1 DataManager.dll'; do
    read -ra names <<<"$file"
    found=
    for name in "${names[@]}"; do
        found+=$(find "$folder/root" -path "*/$name")
    done
    [[ $found ]] || {
        echo "no package holds $file" >&2
        exit 1
    }
done
