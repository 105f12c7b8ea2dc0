#!/usr/bin/env bash
# Fails if an object file holds a fused multiply-add, or if another one, compiled so that it may, holds
# none: cmake/fused.sh OBJDUMP OBJECT OTHER.
set -eu
count() { "$1" -d --no-show-raw-insn "$2" | grep -cE '[[:space:]]vfn?m(add|sub)[0-9a-z]*[[:space:]]' || :; }
found=$(count "$1" "$2")
other=$(count "$1" "$3")
echo "fused operations: $found in $2, $other in $3"
[ "$found" -eq 0 ] && [ "$other" -gt 0 ]
