#!/bin/sh
# build.sh COMPILER PREFIX DIRECTORY: a build without CMake, from an installed tree.
set -eu
here=$(cd "$(dirname "$0")" && pwd)
export PKG_CONFIG_PATH="$2/lib/pkgconfig"
mkdir -p "$3"
# shellcheck disable=SC2046 # the flags are words
"$1" -std=c++17 "$here/../consumer.cpp" -o "$3/consumer" $(pkg-config --cflags --libs mortise)
LD_LIBRARY_PATH="$(pkg-config --variable=libdir mortise)" "$3/consumer"
