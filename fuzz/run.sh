#!/usr/bin/env bash
# Builds a fuzzer with clang and runs it: fuzz/run.sh [SECONDS] [TARGET]
#   SECONDS  how long to run (default 60)
#   TARGET   load: archive records (default); text: expressions, numbers and coordinate pairs
set -euo pipefail
cd "$(dirname "$0")/.."
seconds=60
target=load
for arg in "$@"; do
    case "$arg" in
    load | text) target=$arg ;;
    *[!0-9]* | '') echo "usage: $0 [SECONDS] [load|text]" >&2; exit 2 ;;
    *) seconds=$arg ;;
    esac
done
cmake -S . -B build-fuzz -DCMAKE_CXX_COMPILER=clang++ -DCMAKE_BUILD_TYPE=RelWithDebInfo -DORVMATH_FUZZ=ON \
      -DORVMATH_BUILD_TESTS=OFF -DORVMATH_BUILD_EXAMPLES=OFF
jobs=$(nproc 2>/dev/null || echo 2)
if [ "$target" = load ]; then
    cmake --build build-fuzz --parallel "$jobs" --target orvmath_load_fuzz orvmath_fuzz_seeds
    mkdir -p build-fuzz/corpus
    build-fuzz/fuzz/orvmath_fuzz_seeds build-fuzz/corpus
    build-fuzz/fuzz/orvmath_load_fuzz -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=1 build-fuzz/corpus
else
    cmake --build build-fuzz --parallel "$jobs" --target orvmath_text_fuzz
    corpus=build-fuzz/corpus-text
    mkdir -p "$corpus"
    # A few well-formed inputs to start from: expressions, numbers and pairs.
    i=0
    for seed in "2 * (3 + 4) - 2^-1" "max(1, sin(pi/6), atan2(y, x))" "sqrt(abs(-x)) / ln(e^2)" \
                "log(1e3) + exp(0.5E-1)" "-.5" " +12.5e+3 " "12.5, -3" "12.5;-3" "1 2"; do
        printf '%s' "$seed" >"$corpus/seed$i"
        i=$((i + 1))
    done
    build-fuzz/fuzz/orvmath_text_fuzz -max_total_time="$seconds" -rss_limit_mb=2048 -print_final_stats=1 \
        -dict=fuzz/text.dict "$corpus"
fi
