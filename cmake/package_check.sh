#!/usr/bin/env bash
# Installs the release build, moves the prefix and builds against it, with g++ and with clang++, what
# README shows under "Use it from another project", word by word, and a project in C only.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
need_packages "${base_packages[@]}" clang clang-format
root=$PWD
work=$(mktemp -d)
trap 'rm -rf "$work"' EXIT
fail() {
  echo "package_check: $*" >&2
  exit 1
}

# The passage's blocks: shell1, shell2 ..., and the fenced ones by their kind.
readme=$work/readme
mkdir "$readme"
awk -v folder="$readme" '
  /^## / { on = $0 == "## Use it from another project" }
  !on { next }
  /^```/ { fenced = !fenced; kind = substr($0, 4); next }
  fenced { print > (folder "/" (kind == "" ? "output" : kind)); next }
  /^    / { if (!shell) ++shells; print > (folder "/shell" shells) }
  { shell = /^    / }' README.md
clang-format --style=file:.clang-format --dry-run --Werror "$readme/cpp"

HOME=$work/first quietly bash -e "$readme/shell1"
export HOME=$work/moved
mv "$work/first" "$HOME"
prefix=$HOME/kova

traces=$(grep -rlF -e "$root/build" -e "$work/first" "$prefix" || true)
[ -z "$traces" ] || fail "the place of the build shows in $traces"
headers=$prefix/include/KOVAOrvoPMIExporter
[ -z "$(find "$prefix" -name internals.h)" ] || fail "internals.h is installed"
(cd "$headers" && find . -name '*.h' -printf '#include "%P"\n') |
  g++ -std=c++17 -fsyntax-only -I "$headers" -x c++ -
version=$(sed -n 's/^set(PACKAGE_VERSION "\(.*\)")$/\1/p' \
  "$prefix"/lib/cmake/KOVAOrvoPMIExporter/KOVAOrvoPMIExporterConfigVersion.cmake)
[ "$("$prefix/bin/pmi_report" --version)" = "pmi_report $version" ] || fail "versions differ"
# But for the model's path, the report is the same. 4: some of it may be lost.
(cd / && "$prefix/bin/pmi_report") >"$work/report" 2>/dev/null || [ $? -eq 4 ]
diff <(build/release/bin/pmi_report 2>/dev/null | tail -n +2) <(tail -n +2 "$work/report")
annotations=$(awk -F '; ' 'NR == 1 { n = split($2, counts, ", ")
  for (i = 1; i <= n; ++i) if (counts[i] !~ /capture/) sum += counts[i]
  print sum }' "$work/report")

export CFLAGS='-Wall -Wextra -Wpedantic -Wstrict-prototypes -Werror'
export CXXFLAGS='-Wall -Wextra -Wpedantic -Wconversion -Werror'
for compilers in 'gcc g++' 'clang clang++'; do
  read -r CC CXX <<<"$compilers"
  export CC CXX
  mkdir "$work/$CC"
  cd "$work/$CC"
  cp "$readme/cmake" CMakeLists.txt
  cp "$readme/cpp" list_pmi.cpp
  quietly bash -e <(head -n -1 "$readme/shell2")
  bash -e <(tail -n 1 "$readme/shell2") >list
  head -n "$(wc -l <"$readme/output")" list | diff "$readme/output" -
  [ "$(grep -c '^  type' list)" = "$annotations" ] || fail "not $annotations annotations: $(cat list)"

  # Warnings about the package's own header count, too.
  quietly cmake -S "$root/tests/consumer" -B c -DCMAKE_PREFIX_PATH="$prefix" \
    -DCMAKE_NO_SYSTEM_FROM_IMPORTED=ON
  quietly cmake --build c
  [ "$(c/factory)" = "0x1000001 null 1" ] || fail "from C: $(c/factory)"
done
echo "package_check: package $version serves C++ and C from a moved prefix"
