#!/usr/bin/env bash
# Builds the library and runs the main job: orvroute on the built-in sample road.
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh

jobs=$(nproc 2>/dev/null || echo 2)
cmake -S . -B build -DCMAKE_BUILD_TYPE=RelWithDebInfo
cmake --build build --parallel "$jobs" --target orvroute
build/examples/orvroute table --step 100
build/examples/orvroute svg -o sample-route.svg --offset 7.5 --offset -7.5
echo "wrote sample-route.svg"
