#!/bin/bash
# The test suite again, in build-asan/, with AddressSanitizer and
# UndefinedBehaviorSanitizer: any report fails the run. Only the library and
# the test programs are built there (no benchmarks), at -O1 to keep the build
# affordable. Run after tools/setup-and-test.sh, which installs the packages.
set -euo pipefail
# shellcheck source=setup-common.sh
source "$(dirname "${BASH_SOURCE[0]}")/setup-common.sh"

# shellcheck source=sanitizer-env.sh
source "$root/tools/sanitizer-env.sh"
asan_build=$root/build-asan

say "Configuring $asan_build (AddressSanitizer, UndefinedBehaviorSanitizer)"
cmake -S "$root" -B "$asan_build" -DCMAKE_BUILD_TYPE=Debug "${launcher[@]}" \
    -DCMAKE_CXX_FLAGS="$sanitizer_flags" -DFORMWERK_BUILD_BENCH=OFF >/dev/null
say "Building with sanitizers"
cmake --build "$asan_build" -j"$(build_jobs)"
say "Testing with sanitizers"
ctest --test-dir "$asan_build" --output-on-failure -j"$(build_jobs)"
