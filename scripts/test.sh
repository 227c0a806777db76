#!/usr/bin/env bash
# Builds the library and runs the whole test suite.
#   scripts/test.sh                 ordinary build in build/
#   scripts/test.sh --sanitize      address + undefined-behaviour sanitizers, in build-asan/
#   scripts/test.sh --clang         built with clang++, in build-clang/
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh "${1:-}"

dir=build
args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo)
case "${1:-}" in
--sanitize)
    dir=build-asan
    args=(-DCMAKE_BUILD_TYPE=Debug -DORVMATH_SANITIZE=ON) ;;
--clang)
    dir=build-clang
    args=(-DCMAKE_BUILD_TYPE=RelWithDebInfo -DCMAKE_CXX_COMPILER=clang++) ;;
esac
# Reuse earlier compilations when ccache is installed (same results, faster rebuilds).
if command -v ccache >/dev/null 2>&1; then
    args+=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache)
fi
jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B "$dir" "${args[@]}"
cmake --build "$dir" --parallel "$jobs"
ctest --test-dir "$dir" --output-on-failure --parallel "$jobs"
