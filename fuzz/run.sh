#!/usr/bin/env bash
# Builds the load fuzzer with clang and runs it: fuzz/run.sh [SECONDS] (default 60).
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=${1:-60}
cmake -S . -B build-fuzz -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORVMATH_FUZZ=ON \
      -DORVMATH_BUILD_TESTS=OFF -DORVMATH_BUILD_EXAMPLES=OFF
cmake --build build-fuzz --parallel "$(nproc 2>/dev/null || echo 2)" --target orvmath_load_fuzz orvmath_fuzz_seeds
mkdir -p build-fuzz/corpus
build-fuzz/fuzz/orvmath_fuzz_seeds build-fuzz/corpus
build-fuzz/fuzz/orvmath_load_fuzz -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=1 build-fuzz/corpus
