#!/usr/bin/env bash
# Formatting, of the page's script and style too, compilers' own extensions, and the few findings of
# .clang-tidy that count as errors.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
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
cmake/host_layout.sh
# The page's script and style. The tool comes from npm, in a version that doesn't change.
command -v npx >/dev/null || need_packages npm
(cd host/writers/html && npx --yes @biomejs/biome@2.6.8 ci .)
git ls-files 'KOVAOrvoPMI/**.cpp' 'platform/**.cpp' 'host/**.cpp' |
  xargs -P "$(nproc)" -n 4 clang-tidy -p build/clang --quiet 2>/dev/null
