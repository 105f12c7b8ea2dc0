#!/usr/bin/env bash
# Formatting, compilers' own extensions, and the few findings of .clang-tidy that count as errors.
set -eu
cd "$(dirname "$0")/.."
mapfile -t sources < <(git ls-files '*.h' '*.c' '*.cpp')
clang-format --dry-run --Werror "${sources[@]}"
# A compiler's own builtins and attributes are used in two headers only.
extensions='__builtin_|__attribute__|__declspec|__asm|__extension__|\[\[(gnu|clang|msvc)::|#pragma +[^o]'
if git ls-files 'KOVAOrvoPMI/**.h' 'KOVAOrvoPMI/**.cpp' |
  grep -v -e '/KOVAOrvoPMIExporterExport\.h$' -e '/src/Prefetch\.h$' |
  xargs grep -nE "$extensions"; then
  echo "lint: a compiler's own extension outside the headers for them" >&2
  exit 1
fi
cmake/host_includes.sh
git ls-files 'KOVAOrvoPMI/**.cpp' 'platform/**.cpp' 'host/**.cpp' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet 2>/dev/null
