#!/usr/bin/env bash
# Builds the library and the whole test suite for another platform and runs
# it under an emulator:
#   scripts/cross.sh i686     32-bit x86 Linux (g++ -m32, run under qemu-i386)
#   scripts/cross.sh s390x    big-endian IBM Z Linux (cross g++, qemu-s390x)
#   scripts/cross.sh mingw    64-bit Windows (mingw-w64, run under wine)
# Installs what is missing with apt-get first. Build trees: build-<target>/.
set -euo pipefail
cd "$(dirname "$0")/.."
target="${1:-}"
case "$target" in
i686) packages=(g++-12-multilib qemu-user) ;;
s390x) packages=(g++-s390x-linux-gnu qemu-user) ;;
mingw) packages=(g++-mingw-w64-x86-64-posix wine64) ;;
*) echo "usage: $0 i686|s390x|mingw" >&2; exit 2 ;;
esac
scripts/deps.sh
missing=()
for p in "${packages[@]}"; do dpkg -s "$p" >/dev/null 2>&1 || missing+=("$p"); done
if [ ${#missing[@]} -gt 0 ]; then
    echo "Installing: ${missing[*]}"
    sudo=""
    [ "$(id -u)" -eq 0 ] || sudo="sudo"
    $sudo apt-get update -qq
    DEBIAN_FRONTEND=noninteractive $sudo apt-get -o DPkg::Lock::Timeout=900 install -y -qq --no-install-recommends \
        "${missing[@]}"
fi

dir="$PWD/build-$target"
toolchain="$PWD/cmake/toolchains/$target.cmake"
prefix="$dir/prefix"
jobs=$(nproc 2>/dev/null || echo 2)
launcher=()
command -v ccache >/dev/null 2>&1 && launcher=(-DCMAKE_CXX_COMPILER_LAUNCHER=ccache -DCMAKE_C_COMPILER_LAUNCHER=ccache)
if [ "$target" = mingw ]; then
    export WINEPREFIX="$dir/wine" WINEDEBUG=-all WINEDLLOVERRIDES="mscoree,mshtml="
fi

# GoogleTest for the target, from Debian's sources, with the same toolchain.
if [ ! -f "$prefix/.gtest-built" ]; then
    cmake -S /usr/src/googletest -B "$dir/gtest" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
        -DCMAKE_INSTALL_PREFIX="$prefix" -DBUILD_GMOCK=OFF -Dgtest_disable_pthreads=OFF "${launcher[@]}" >/dev/null
    cmake --build "$dir/gtest" --parallel "$jobs"
    cmake --install "$dir/gtest" >/dev/null
    touch "$prefix/.gtest-built"
fi

# Boost is used for its headers only, which serve every target; they are
# reached through the prefix so that the host's other headers stay out.
mkdir -p "$prefix/include"
ln -sfn /usr/include/boost "$prefix/include/boost"

cmake -S . -B "$dir/orvmath" -DCMAKE_TOOLCHAIN_FILE="$toolchain" -DCMAKE_BUILD_TYPE=Release \
    -DORVMATH_CROSS_PREFIX="$prefix" -DCMAKE_PREFIX_PATH="$prefix" -DORVMATH_BUILD_EXAMPLES=OFF \
    -DBoost_NO_BOOST_CMAKE=ON -DBoost_INCLUDE_DIR="$prefix/include" \
    -DCMAKE_RUNTIME_OUTPUT_DIRECTORY="$dir/orvmath/bin" "${launcher[@]}"
cmake --build "$dir/orvmath" --parallel "$jobs"
retry=()
if [ "$target" = mingw ]; then
    # One wineserver for the whole run; a test whose process wine failed to
    # start (no output at all) is tried once more.
    # The server runs in the prefix, so it must exist before the server starts.
    mkdir -p "$WINEPREFIX"
    /usr/lib/wine/wineserver -k >/dev/null 2>&1 || true
    /usr/lib/wine/wineserver -p
    trap '/usr/lib/wine/wineserver -k >/dev/null 2>&1 || true' EXIT
    /usr/lib/wine/wine64 wineboot --init >/dev/null 2>&1 || true  # the first start builds the prefix, slowly
    retry=(--repeat until-pass:2)
fi
ctest --test-dir "$dir/orvmath" --output-on-failure --parallel "$jobs" "${retry[@]}"
