#!/usr/bin/env bash
# Builds the API reference; fails on a public member without documentation, and on every other warning.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
need_packages "${base_packages[@]}" doxygen
# Configured anew: the program may have come just now.
quietly cmake --preset release
cmake --build --preset release --target reference
echo "reference: build/release/reference/html/index.html, every public member documented"
