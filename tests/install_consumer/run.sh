#!/bin/bash
# Installs a built tree into a scratch prefix and builds programs against it:
# one with find_package(Formwerk), one with pkg-config, and runs the installed
# command; the README's library example is built and run as its text stands.
# Usage: run.sh BUILD_DIR SCRATCH_DIR [CMAKE [CXX [CXXFLAGS]]]: the compiler
# and flags of the tree under test, so that a sanitizer build's hosts carry
# the same runtime.
set -euo pipefail
build=$1
scratch=$2
cmake=${3:-cmake}
cxx=${4:-g++}
cxxflags=${5:-}
here=$(cd "$(dirname "$0")" && pwd)
prefix=$scratch/prefix

rm -rf "$scratch"
mkdir -p "$scratch"
"$cmake" --install "$build" --prefix "$prefix" >"$scratch/install.log"

# Installed headers name each other as <formwerk/...>, so that a host needs
# only include/ on its path and its own core/ or forms/ cannot shadow ours.
if grep -rn '#include "' "$prefix/include/formwerk"; then
    echo "consumer: installed headers still include by bare folder names" >&2
    exit 1
fi

# The first C++ block of the README's "Using the library" section.
example=$scratch/readme_example.cpp
awk '/^## Using the library/ { section = 1; next }
     section && /^## / { exit }
     section && /^```cpp/ { inside = 1; next }
     inside && /^```/ { exit }
     inside { print }' "$here/../../README.md" >"$example"
[ -s "$example" ] || { echo "consumer: no C++ example in the README" >&2; exit 1; }

"$cmake" -S "$here" -B "$scratch/build" -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_BUILD_TYPE=Release -DCMAKE_CXX_COMPILER="$cxx" -DCMAKE_CXX_FLAGS="$cxxflags" \
    -DREADME_EXAMPLE="$example" >"$scratch/configure.log"
"$cmake" --build "$scratch/build" >"$scratch/build.log"
"$scratch/build/consumer"
"$scratch/build/driven"
# Esc on Yes/No/Cancel is Cancel.
"$scratch/build/readme_example" | tee "$scratch/readme_example.log"
grep -qx 'Answer: 2' "$scratch/readme_example.log"
echo "consumer: the README's example runs"

pcdir=$(dirname "$(find "$prefix" -name formwerk.pc | head -n 1)")
libdir=$(PKG_CONFIG_PATH=$pcdir pkg-config --variable=libdir formwerk)
# shellcheck disable=SC2046,SC2086 # the flags are meant to split
"$cxx" -std=c++20 $cxxflags $(PKG_CONFIG_PATH=$pcdir pkg-config --cflags formwerk) "$here/names.cpp" \
    -o "$scratch/names" $(PKG_CONFIG_PATH=$pcdir pkg-config --libs formwerk) \
    -Wl,-rpath,"$libdir"
"$scratch/names"
echo "consumer: pkg-config build works"

# The installed command finds the installed library through its RPATH.
"$prefix/bin/formwerk" --list | grep -qx frm_DialogMessage
echo "consumer: installed formwerk lists its dialogs"
