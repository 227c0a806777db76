#!/usr/bin/env bash
# Installs the Python module from the source tree into a fresh virtual
# environment, as a user would, and runs its tests against the installed copy.
#   scripts/python.sh [VENV_DIR]      (default: build-venv/)
set -euo pipefail
cd "$(dirname "$0")/.."
scripts/deps.sh
venv="${1:-$PWD/build-venv}"
rm -rf "$venv"
/usr/bin/python3 -m venv --system-site-packages "$venv"
"$venv/bin/pip" install --quiet --no-build-isolation --no-index .
rm -rf orvmath.egg-info
# From another folder, so that the installed package is the one imported.
cd "$(mktemp -d)"
"$venv/bin/python" -c "import orvmath; print('orvmath imported from', orvmath.__file__)"
"$venv/bin/python" -m pytest -q -p no:cacheprovider "$OLDPWD/python/tests"
