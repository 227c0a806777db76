#!/usr/bin/env bash
# Builds the library and runs the whole test suite.
#   scripts/test.sh                 ordinary build in build/
#   scripts/test.sh --sanitize      address + undefined-behaviour sanitizers, in build-asan/
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh

dir=build
args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
if [ "${1:-}" = "--sanitize" ]; then
    dir=build-asan
    args=(-DCMAKE_BUILD_TYPE=Debug -DORVMATH_SANITIZE=ON)
fi
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B "$dir" "${args[@]}"
cmake --build "$dir" --parallel "$jobs"
ctest --test-dir "$dir" --output-on-failure --parallel "$jobs"
