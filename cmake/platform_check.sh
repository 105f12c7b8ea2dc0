#!/usr/bin/env bash
# Builds the plug-in against a package KOVAPlatform that knows nothing of the stand-in: once with the
# public headers of the eight libraries, and once with the same headers without what only the
# stand-in is known to offer. Compares what the plug-in uses with docs/platform.md.
set -eu
cd "$(dirname "$0")/.."
. cmake/setup.sh
need_packages "${base_packages[@]}" python3-clang-14
libraries=(framework_base framework_core framework_pmi framework_orvo
  orvo_kernel pmi_entities pmi_importer os_loader)
folder=build/platform_check
rm -rf "$folder"
fail() {
  echo "platform_check: $*" >&2
  exit 1
}

# package NAME: the public headers as a package in the folder NAME.
package() {
  local library
  for library in "${libraries[@]}"; do
    mkdir -p "$folder/$1/$library"
    cp platform/"$library"/*.h "$folder/$1/$library"
    rm -f "$folder/$1/$library/internals.h"
  done
  cat >"$folder/$1/KOVAPlatformConfig.cmake" <<END
foreach(library ${libraries[*]})
  add_library(\${library} INTERFACE IMPORTED)
  target_include_directories(\${library} INTERFACE \${CMAKE_CURRENT_LIST_DIR})
endforeach()
add_library(os_loader_shim INTERFACE IMPORTED)
# There is nothing to link yet.
target_link_options(os_loader_shim INTERFACE LINKER:-z,undefs)
END
}
configure() {
  cmake -G Ninja -B "$folder/build/$1" -DKOVA_PLATFORM="$folder/$1" -DCMAKE_CXX_COMPILER=g++ \
    -DCMAKE_COMPILE_WARNING_AS_ERROR=ON
}

# accepts HEADERS STATEMENT ...: true if the statements compile with these headers.
accepts() {
  local headers=$1
  shift
  {
    (cd "$folder/$headers" && find . -name '*.h' -printf '#include "%P"\n')
    cat <<'END'
void use(ENTITY_LIST& list, const ENTITY_LIST& members, const VOID_LIST& leaders,
         const ENTITY& entity, const ATTRIB& attribute, const PLANE& plane,
         const QENCOLLECTION& collection, const KOVAPMI_DIMENSION& dimension,
         const outcome& answer, const orvo_exception& raised, const message_module& messages,
         const KOVARepresentation& representation, const KOVADynamicArray<bool>& flags) {
END
    printf '%s;\n' "$@"
    echo '}'
  } | g++ -std=c++17 -fsyntax-only -I "$folder/$headers" -x c++ - 2>"$folder/log"
}

package public
package plain
/usr/bin/python3 cmake/plain_headers.py "$folder/plain"
conveniences=(
  'KOVAResult(0).GetCode()'
  'constexpr KOVAResult constant(0)'
  'KOVAResult unset'
  'KOVAIdentifier identifier'
  'flags.Count()'
  'flags[0]'
  'representation.GetDocument()'
  'list.add(nullptr, false)'
  'list.remove(nullptr)'
  'list.lookup(nullptr)'
  'list.clear()'
  'list = members'
  'ENTITY_LIST copy(members)'
  'members.init()'
  'members.next()'
  'members.count()'
  'members.iteration_count()'
  'members[0]'
  'leaders.count()'
  'leaders[0]'
  'outcome succeeded'
  'answer.error_number()'
  'raised.error_number()'
  'messages.message_code(8)'
  'int propagate = problems_list_propagate'
  'entity.identity(0)'
  'entity.first_attribute()'
  'attribute.next_attribute()'
  'attribute.identity(0)'
  'static_assert(ATTRIB_KOVAPMI_TEXT_TYPE > 0)'
  'static_assert(DLL_PROCESS_ATTACH > 0)'
  'plane.equation()'
  'collection.members()'
  'dimension.get_dimension_value()'
  'dimension.GetDimensionNote()'
)
accepts public "${conveniences[@]}" || fail "the public headers: $(cat "$folder/log")"
accepts plain 'list.add(nullptr)' || fail "the plain headers: $(cat "$folder/log")"
for statement in "${conveniences[@]}"; do
  if accepts plain "$statement"; then fail "the plain headers still accept: $statement"; fi
done

for headers in public plain; do
  quietly configure "$headers"
  quietly cmake --build "$folder/build/$headers" || fail "src asks for more than the $headers headers"
  # What is left open is the part of the libraries.
  nm -D --undefined-only "$folder/build/$headers/lib/libKOVAOrvoPMIExporter.so" | grep -q ENTITY
done

/usr/bin/python3 cmake/platform_table.py "$folder/build/plain" "$folder/plain" docs/platform.md

# A package that lacks a library is told from one that has all.
sed -i 's/ os_loader)/)/' "$folder/public/KOVAPlatformConfig.cmake"
if configure public >"$folder/log" 2>&1 || ! grep -q 'No target os_loader in' "$folder/log"; then
  fail "a package without os_loader was not refused: $(cat "$folder/log")"
fi
echo "platform_check: src needs the plain public headers of the eight libraries and no more"
