#!/usr/bin/env bash
# Regenerates tests/portability/golden.txt, the records and evaluations that
# every platform must reproduce bit for bit. Run it on x86-64 only after a
# deliberate change of a record or an evaluation, and say why in the commit.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo >/dev/null
cmake --build build --parallel "$(nproc 2>/dev/null || echo 2)" --target orvmath_byte_identity
build/tests/portability/orvmath_byte_identity --print > tests/portability/golden.txt
git diff --stat -- tests/portability/golden.txt
