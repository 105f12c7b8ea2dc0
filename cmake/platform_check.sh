#!/usr/bin/env bash
# Builds the plug-in against the public headers of the eight libraries alone, as a package
# KOVAPlatform that knows nothing of the stand-in: what src may include is what the libraries offer.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
need_packages "${base_packages[@]}"
libraries=(framework_base framework_core framework_pmi framework_orvo
  orvo_kernel pmi_entities pmi_importer os_loader)
folder=build/platform_check
rm -rf "$folder"
for library in "${libraries[@]}"; do
  mkdir -p "$folder/platform/$library/$library"
  cp platform/"$library"/*.h "$folder/platform/$library/$library"
  rm -f "$folder/platform/$library/$library/internals.h"
done
cat >"$folder/platform/KOVAPlatformConfig.cmake" <<END
foreach(library ${libraries[*]})
  add_library(\${library} INTERFACE IMPORTED)
  target_include_directories(\${library} INTERFACE \${CMAKE_CURRENT_LIST_DIR}/\${library})
endforeach()
add_library(os_loader_shim INTERFACE IMPORTED)
# There is nothing to link yet.
target_link_options(os_loader_shim INTERFACE LINKER:-z,undefs)
END

configure() { cmake -G Ninja -B "$folder/build" -DKOVA_PLATFORM="$folder/platform"; }
quietly configure
quietly cmake --build "$folder/build"
# What is left open is the libraries' part.
nm -D --undefined-only "$folder"/build/lib/libKOVAOrvoPMIExporter.so | grep -q ENTITY

# A package that lacks a library is told from one that has all.
sed -i 's/ os_loader)/)/' "$folder/platform/KOVAPlatformConfig.cmake"
if configure >"$folder/log" 2>&1 || ! grep -q 'No target os_loader in' "$folder/log"; then
  cat "$folder/log" >&2
  echo "platform_check: a package without os_loader was not refused" >&2
  exit 1
fi
echo "platform_check: src needs the eight libraries' public headers and no more"
