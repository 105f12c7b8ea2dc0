#include "framework_base/KOVADynamicArray.h"

#include <algorithm>
#include <cstring>

namespace {

std::size_t Bytes(const KOVAArrayHeader& array, int elements) {
  return static_cast<std::size_t>(elements) * static_cast<std::size_t>(array.elementSize);
}

}  // namespace

KOVAArrayHeader* kovaArrayAllocate(int count, int elementSize) {
  const KOVAArrayHeader header{0, count, elementSize};
  void* storage = ::operator new(sizeof(KOVAArrayHeader) + Bytes(header, count));
  return new (storage) KOVAArrayHeader(header);
}

void kovaArrayAdd(KOVAArrayHeader*& array, void* element) {
  if (array->count == array->room) {
    KOVAArrayHeader* larger = kovaArrayAllocate(std::max(4, array->room * 2), array->elementSize);
    std::memcpy(kovaArrayData(larger), kovaArrayData(array), Bytes(*array, array->count));
    larger->count = array->count;
    ::operator delete(array);
    array = larger;
  }
  std::memcpy(static_cast<char*>(kovaArrayData(array)) + Bytes(*array, array->count), element,
              static_cast<std::size_t>(array->elementSize));
  ++array->count;
}

void kovaArrayClear(KOVAArrayHeader*& array) {
  if (array != nullptr) array->count = 0;
}

void kovaArrayFree(KOVAArrayHeader*& array, KOVAArrayFreeCallback* callback) {
  if (callback != nullptr) callback->ReleaseElements();
  ::operator delete(array);
  array = nullptr;
}

KOVAArrayHeader* kovaArrayCopy(KOVAArrayHeader* array) {
  KOVAArrayHeader* copy = kovaArrayAllocate(array->room, array->elementSize);
  std::memcpy(kovaArrayData(copy), kovaArrayData(array), Bytes(*array, array->count));
  copy->count = array->count;
  return copy;
}
