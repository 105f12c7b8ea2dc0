#!/usr/bin/env bash
# Formatting, and the few findings of .clang-tidy that count as errors.
set -eu
cd "$(dirname "$0")/.."
mapfile -t sources < <(git ls-files '*.h' '*.c' '*.cpp')
clang-format --dry-run --Werror "${sources[@]}"
git ls-files 'KOVAOrvoPMI/**.cpp' 'platform/**.cpp' 'host/**.cpp' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet 2>/dev/null
