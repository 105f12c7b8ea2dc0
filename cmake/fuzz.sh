#!/usr/bin/env bash
# Feeds damaged documents to the model readers and the whole walk behind them: cmake/fuzz.sh
# [SECONDS] for each format. Starts from small pieces of the bundled models, and their names; findings
# are left in build/fuzz/findings.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
need_packages "${base_packages[@]}" clang libclang-rt-dev python3
build fuzz qif_fuzz step_fuzz
mkdir -p build/fuzz/qif build/fuzz/step build/fuzz/findings
python3 tests/fuzz/seeds.py models/mounting_bracket.qif build/fuzz/qif
# Each piece is a paragraph of the model behind its first two, with product, units and shape.
awk -v folder=build/fuzz/step 'BEGIN { RS = ""; ORS = "\n" }
  NR < 3 { head = head $0 "\n"; next }
  { file = folder "/piece" NR ".stp"; sub(/ENDSEC;\nEND-ISO-10303-21;/, "")
    print head $0 "\nENDSEC;\nEND-ISO-10303-21;" > file }' models/*.stp
grep -ohE '<[A-Za-z0-9]+|[A-Za-z]+="|[A-Z_]{4,}' models/*.qif | sort -u |
  sed 's/"/\\"/g; s/.*/"&"/' >build/fuzz/qif.dict
grep -ohE '[A-Z_0-9]{4,}\(?|\.[A-Z_]+\.' models/*.stp | sort -u | sed 's/.*/"&"/' >build/fuzz/step.dict
# Documents are small: the program's bound on memory is little more than 100 MB, and the sanitizer
# takes as much again.
export ASAN_OPTIONS=quarantine_size_mb=16
# A machine to itself does 500 executions a second and more; a loaded one must not fail for that. Fewer
# than this means that inputs have become slow, or that seeds are whole documents again.
least=200
for format in qif step; do
  status=0
  build/fuzz/bin/${format}_fuzz -dict=build/fuzz/$format.dict \
    -artifact_prefix=build/fuzz/findings/ -max_total_time="${1:-60}" -timeout=20 \
    -rss_limit_mb=250 -print_final_stats=1 build/fuzz/$format >build/fuzz/log 2>&1 || status=$?
  if [ $status -ne 0 ]; then
    tail -n 60 build/fuzz/log
    exit $status
  fi
  echo "$format:"
  grep -E 'DONE|^Done|^stat::' build/fuzz/log
  speed=$(sed -n 's/^stat::average_exec_per_sec: *//p' build/fuzz/log)
  if [ "$speed" -lt $least ]; then
    echo "fuzz: $format had $speed executions a second, fewer than $least" >&2
    exit 1
  fi
done
