#!/bin/bash
# Installs a built tree into a scratch prefix and builds programs against it:
# one with find_package(Formwerk), one with pkg-config, and runs the installed
# command. Usage: run.sh BUILD_DIR SCRATCH_DIR [CMAKE]
set -euo pipefail
build=$1
scratch=$2
cmake=${3:-cmake}
here=$(cd "$(dirname "$0")" && pwd)
prefix=$scratch/prefix

rm -rf "$scratch"
mkdir -p "$scratch"
"$cmake" --install "$build" --prefix "$prefix" >"$scratch/install.log"

"$cmake" -S "$here" -B "$scratch/build" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_BUILD_TYPE=Release >"$scratch/configure.log"
"$cmake" --build "$scratch/build" >"$scratch/build.log"
"$scratch/build/consumer"
"$scratch/build/driven"

pcdir=$(dirname "$(find "$prefix" -name formwerk.pc | head -n 1)")
libdir=$(PKG_CONFIG_PATH=$pcdir pkg-config --variable=libdir formwerk)
# shellcheck disable=SC2046 # the flags are meant to split
g++ -std=c++20 $(PKG_CONFIG_PATH=$pcdir pkg-config --cflags formwerk) "$here/names.cpp" \
    -o "$scratch/names" $(PKG_CONFIG_PATH=$pcdir pkg-config --libs formwerk) \
    -Wl,-rpath,"$libdir"
"$scratch/names"
echo "consumer: pkg-config build works"

# The installed command finds the installed library through its RPATH.
"$prefix/bin/formwerk" --list | grep -qx frm_DialogMessage
echo "consumer: installed formwerk lists its dialogs"
