#!/usr/bin/env bash
# Builds a host with nothing but what pkg-config says, and runs it.
set -euo pipefail
export PKG_CONFIG_LIBDIR=$1
source=$2 folder=$3 compiler=$4
emulator=("${@:5}")

rm -rf "$folder"
mkdir "$folder"
read -ra flags <<<"$(pkg-config --cflags --libs 'dorvale >= 1.0')"
"$compiler" -std=c++17 "$source" "${flags[@]}" -o "$folder/consumer.exe"
"${emulator[@]}" "$folder/consumer.exe"
