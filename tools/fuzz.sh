#!/bin/bash
# The libFuzzer targets (fuzz/), built by clang in build-fuzz/ with
# AddressSanitizer and UndefinedBehaviorSanitizer.
#   tools/fuzz.sh               builds them all and runs each a few seconds (ctest)
#   tools/fuzz.sh NAME SECONDS  runs one (request, sendkeys, settings, xml, package, ftplisting) longer
# Inputs that find new paths collect in build-fuzz/fuzz/NAME/corpus; a crash
# is saved as build-fuzz/fuzz/NAME/crash-*, to be added to fuzz/corpus/NAME
# once fixed.
set -euo pipefail
# shellcheck source=setup-common.sh
source "$(dirname "${BASH_SOURCE[0]}")/setup-common.sh"
# shellcheck source=sanitizer-env.sh
source "$root/tools/sanitizer-env.sh"
fuzz_build=$root/build-fuzz

if [ $# -ne 0 ] && [ $# -ne 2 ]; then
    echo "usage: tools/fuzz.sh [NAME SECONDS]" >&2
    exit 64
fi
if [ $# -eq 2 ] && [ ! -d "$root/fuzz/corpus/$1" ]; then
    echo "fuzz: no target '$1' (one of: $(find "$root/fuzz/corpus" -mindepth 1 -maxdepth 1 -printf '%f '))" >&2
    exit 64
fi

say "Configuring $fuzz_build (clang, libFuzzer)"
CXX=clang++ cmake -S "$root" -B "$fuzz_build" -DCMAKE_BUILD_TYPE=Debug "${launcher[@]}" \
    -DCMAKE_CXX_FLAGS="$sanitizer_flags" -DFORMWERK_BUILD_FUZZ=ON \
    -DFORMWERK_BUILD_TESTS=OFF -DFORMWERK_BUILD_BENCH=OFF >/dev/null
targets=(fuzz_request fuzz_sendkeys fuzz_settings fuzz_xml fuzz_package fuzz_ftplisting)
[ $# -eq 2 ] && targets=("fuzz_$1")
say "Building ${targets[*]}"
cmake --build "$fuzz_build" -j"$(build_jobs)" --target "${targets[@]}"

if [ $# -eq 0 ]; then
    say "Fuzzing each target briefly"
    ctest --test-dir "$fuzz_build" --output-on-failure -j"$(build_jobs)"
    exit
fi
work=$fuzz_build/fuzz/$1
mkdir -p "$work/corpus"
say "Fuzzing $1 for $2 s"
QT_QPA_PLATFORM=offscreen "$fuzz_build/fuzz/fuzz_$1" -max_total_time="$2" -timeout=10 \
    -rss_limit_mb=2048 -print_final_stats=1 -artifact_prefix="$work/crash-" \
    "$work/corpus" "$root/fuzz/corpus/$1"
