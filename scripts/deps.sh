#!/usr/bin/env bash
# Installs the build dependencies with apt-get when any is missing (Debian).
#   scripts/deps.sh [--clang]     --clang: clang too
set -euo pipefail

missing=()
command -v cmake >/dev/null 2>&1 || missing+=(cmake)
command -v g++ >/dev/null 2>&1 || missing+=(g++)
command -v make >/dev/null 2>&1 || missing+=(make)
# The packaging test builds a consumer through pkg-config.
command -v pkg-config >/dev/null 2>&1 || missing+=(pkg-config)
[ -f /usr/include/boost/numeric/ublas/matrix.hpp ] || missing+=(libboost-dev)
[ -f /usr/include/gtest/gtest.h ] || missing+=(libgtest-dev)
[ -f /usr/include/benchmark/benchmark.h ] || missing+=(libbenchmark-dev)
# LandXML import and export of routes (optional: the library builds without it).
[ -f /usr/include/pugixml.hpp ] || missing+=(libpugixml-dev)
# The Python module and its tests (Debian's interpreter, /usr/bin/python3).
# The API reference (the docs target): doxygen.
command -v doxygen >/dev/null 2>&1 || missing+=(doxygen)
for p in python3-dev python3-pybind11 python3-numpy python3-pytest python3-setuptools python3-venv; do
    dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p")
done
if [ "${1:-}" = "--clang" ]; then
    command -v clang++ >/dev/null 2>&1 || missing+=(clang)
fi

if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get install -y -qq "${missing[@]}"
fi
