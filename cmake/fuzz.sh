#!/usr/bin/env bash
# Feeds damaged documents to the model reader and the whole walk behind it: cmake/fuzz.sh [SECONDS].
# Starts from small documents cut from the bundled model, and its names; findings are left in
# build/fuzz/findings.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
need_packages "${base_packages[@]}" clang libclang-rt-dev python3
build fuzz qif_fuzz
mkdir -p build/fuzz/corpus build/fuzz/findings
python3 tests/fuzz/seeds.py models/mounting_bracket.qif build/fuzz/corpus
grep -ohE '<[A-Za-z0-9]+|[A-Za-z]+="|[A-Z_]{4,}' models/*.qif | sort -u |
  sed 's/"/\\"/g; s/.*/"&"/' >build/fuzz/names.dict
# Documents are small: the program's bound on memory is little more than 100 MB, and the sanitizer
# takes as much again.
export ASAN_OPTIONS=quarantine_size_mb=16
status=0
build/fuzz/bin/qif_fuzz -dict=build/fuzz/names.dict -artifact_prefix=build/fuzz/findings/ \
  -max_total_time="${1:-60}" -timeout=20 -rss_limit_mb=250 -print_final_stats=1 \
  build/fuzz/corpus >build/fuzz/log 2>&1 || status=$?
if [ $status -eq 0 ]; then
  grep -E 'DONE|^Done|^stat::' build/fuzz/log
else
  tail -n 60 build/fuzz/log
fi
exit $status
