#!/usr/bin/env bash
# Fails unless a library exports the two classes, the factory, the marker and nothing else. A DLL also
# has to ask the system's loader not to tell it of threads: cmake/exports.sh LIBRARY.
set -eu
need() { grep -qE "$1" <<<"$2" || { echo "missing: $1" >&2 && exit 1; }; }

case $1 in
*.dll)
  tables=$(x86_64-w64-mingw32-objdump -p "$1")
  names=$(sed -n '/^\[Ordinal\/Name Pointer\] Table/,/^$/s/^\t\[ *[0-9]*\] //p' <<<"$tables")
  need '[[:space:]]DisableThreadLibraryCalls$' "$tables"
  ;;
*)
  names=$(nm -D --defined-only --format=posix "$1" | cut -d ' ' -f 1)
  header=$(dirname "$0")/../KOVAOrvoPMI/KOVAOrvoPMIExporter.m/PublicInterfaces/KOVAOrvoPMIExporter.h
  inside=$(sed -n 's/^ *KOVA_ORVO_PMI_INTERNAL .* \([A-Za-z]*\)(.*/\1/p' "$header" | paste -sd '|')
  ;;
esac
names=$(c++filt <<<"$names")
if shown=$(grep -E "::(${inside:-none})\\(" <<<"$names"); then
  echo "shown: $shown" >&2
  exit 1
fi
for class in KOVAOrvoPMIExporter KOVAOrvoPMIAttributeExporter; do
  need "^vtable for $class\$" "$names"
  need "^$class::~$class\\(\\)\$" "$names"
done
classes='^((vtable|typeinfo|typeinfo name) for )?KOVAOrvoPMI(Attribute)?Exporter(::.*)?$'
diff - <(grep -vE "$classes" <<<"$names" | LC_ALL=C sort) <<'END'
KOVACreateOrvoPMIExporter
MERIDAN_WORKS_RQF5_INTERNAL_KOVAOrvoPMIExporter
END
