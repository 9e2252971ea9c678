#!/bin/bash
# Fresh Debian 12 to a tested build: installs what is missing, builds
# everything (library, command, tests, benchmarks) and runs the test suite.
set -euo pipefail
# shellcheck source=setup-common.sh
source "$(dirname "${BASH_SOURCE[0]}")/setup-common.sh"

install_missing
latin1_locale
configure
say "Building"
cmake --build "$build" -j"$(build_jobs)"
say "Testing"
ctest --test-dir "$build" --output-on-failure -j"$(build_jobs)"
