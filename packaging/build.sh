#!/bin/sh
# Configures and builds build/release. What the compiler says is shown at a terminal, and where the build fails.
# Usage: build.sh [CMAKE OPTION...]
set -eu
cd "$(dirname "$0")/.."
cmake --preset release -Wno-dev "$@" >/dev/null
if [ -t 1 ]; then
    cmake --build --preset release
elif ! cmake --build --preset release >build/release/build.log 2>&1; then
    tail -n 60 build/release/build.log
    exit 1
fi
