#!/usr/bin/env bash
# Fails where a source file of the program includes what its folder must not know: readers never
# see writers, writers never see readers, rules see the report alone, neither sees the plug-in, and only readers know the kernel.
# Fails on a file of more than 300 lines, too.
set -eu
cd "$(dirname "$0")/../host"
status=0
# check PLACE PREFIX...: what PLACE, a folder or file, includes in quotes starts with one of the
# prefixes.
check() {
  local place=$1 allowed
  shift
  allowed=$(IFS='|' && echo "$*")
  if grep -rHnE '^ *# *include *"' "$place" | grep -vE "include *\"($allowed)"; then
    echo "host_layout: not for host/$place" >&2
    status=1
  fi
}
kernel=(orvo_kernel/ pmi_entities/ standin/)
check model model/ "${kernel[@]}"
for format in readers/*/; do check "$format" model/ "$format" "${kernel[@]}"; done
check plugin plugin/ framework_ KOVAOrvoPMIExporterFactory.h
check report report/ framework_
check checks checks/ report/
for form in writers/*/; do
  drawing=()
  [ "$form" != writers/html/ ] || drawing=(model/Drawing.h)
  check "$form" report/ "$form" "${drawing[@]}"
done
# What puts them together. A file that is not named here may include only its own header.
for file in *.h *.cpp; do
  case $file in
    main.cpp) check $file Session.h ;;
    CommandLine.*) check $file CommandLine.h checks/ report/ writers/ ;;
    MakeReport.*) check $file MakeReport.h model/ report/ pmi_entities/ framework_pmi/ ;;
    Session.*)
      check $file Session.h CommandLine.h MakeReport.h Output.h \
        checks/ model/ plugin/ readers/ report/ writers/ ;;
    *) check "$file" "${file%.*}.h" ;;
  esac
done
while read -r lines file; do
  if [ "$lines" -gt 300 ] && [ "$file" != total ]; then
    echo "host_layout: host/$file has $lines lines; at most 300" >&2
    status=1
  fi
done < <(find . -type f -exec wc -l {} +)
[ $status -ne 0 ] || echo "host_layout: every file of the program includes only what it may"
exit $status
