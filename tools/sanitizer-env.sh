# shellcheck shell=bash
# shellcheck disable=SC2034 # set for, and taken from, the scripts that source it
# Shared by the sanitizer and fuzz scripts: compiler flags, the runtime
# options that make every report fatal.
# Sourced after setup-common.sh, not run.

sanitizer_flags="-O1 -g -fsanitize=address,undefined -fno-omit-frame-pointer -fno-sanitize-recover=undefined"
# LeakSanitizer stays on with no suppressions: the suite leaks nothing today,
# Qt's process-long caches included, so any report is a new leak.
# No strict_string_checks: libxkbcommon-x11 hands strndup a buffer without a
# terminating NUL, which is valid C but reported under that option as soon as
# a test opens an X connection.
export ASAN_OPTIONS=detect_stack_use_after_return=0:check_initialization_order=1
export UBSAN_OPTIONS=halt_on_error=1:print_stacktrace=1
