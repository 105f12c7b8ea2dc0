#!/usr/bin/env bash
# Fails where a source file of the program includes what its folder must not know: readers never
# see writers, writers never see readers, neither sees the plug-in, and only readers know the kernel.
set -eu
cd "$(dirname "$0")/../host"
status=0
# check FOLDER PREFIX...: what FOLDER includes in quotes starts with one of the prefixes.
check() {
  local folder=$1 allowed
  shift
  allowed=$(IFS='|' && echo "$*")
  if grep -rnE '^ *# *include *"' "$folder" | grep -vE "include *\"($allowed)"; then
    echo "host_includes: not for host/$folder" >&2
    status=1
  fi
}
kernel=(orvo_kernel/ pmi_entities/ standin/)
check model model/ "${kernel[@]}"
for format in readers/*/; do check "$format" model/ "$format" "${kernel[@]}"; done
check plugin plugin/ framework_ KOVAOrvoPMIExporterFactory.h
check report report/ framework_
for form in writers/*/; do check "$form" report/ "$form"; done
[ $status -ne 0 ] || echo "host_includes: every folder of the program includes only what it may"
exit $status
