#pragma once

#include <cstddef>
#include <new>
#include <utility>

// The base library's untyped growable array: `count` elements of `elementSize` bytes each stand
// behind the header.
struct alignas(std::max_align_t) KOVAArrayHeader {
  // Elements in the array.
  int count;
  // Elements that fit without growing.
  int room;
  // Bytes of an element.
  int elementSize;
};

// Told by kovaArrayFree to release the elements before their storage goes.
class KOVAArrayFreeCallback {
 public:
  // Destroys every element; the storage stays.
  virtual void ReleaseElements() = 0;

 protected:
  virtual ~KOVAArrayFreeCallback() = default;
};

// An empty array with room for `count` elements. Throws std::bad_alloc.
KOVAArrayHeader* kovaArrayAllocate(int count, int elementSize);
// Appends the bytes at `element`; may move the array, and moves its elements by their bytes.
// Throws std::bad_alloc and leaves the array as it was.
void kovaArrayAdd(KOVAArrayHeader*& array, void* element);
// Elements in the array; 0 for a null array.
inline int kovaArrayCount(KOVAArrayHeader* array) { return array == nullptr ? 0 : array->count; }
// Forgets all elements without releasing them; the room stays.
void kovaArrayClear(KOVAArrayHeader*& array);
// Lets `callback` (may be null) release the elements, frees the storage and nulls `array`.
void kovaArrayFree(KOVAArrayHeader*& array, KOVAArrayFreeCallback* callback);
// A new array with the same bytes. Throws std::bad_alloc.
KOVAArrayHeader* kovaArrayCopy(KOVAArrayHeader* array);
// The first element's bytes.
inline void* kovaArrayData(KOVAArrayHeader* array) { return array + 1; }

// Typed array over the untyped one.
// CAVEAT: growing moves elements by their bytes, so T must not point into itself.
template <typename T>
class KOVADynamicArray : public KOVAArrayFreeCallback {
 public:
  // Empty, with room for `count` elements. Throws std::bad_alloc.
  explicit KOVADynamicArray(int count)
      : array_(kovaArrayAllocate(count, static_cast<int>(sizeof(T)))) {}
  KOVADynamicArray(const KOVADynamicArray&) = delete;
  KOVADynamicArray& operator=(const KOVADynamicArray&) = delete;

  // Destroys every element and leaves the array empty.
  void ReleaseElements() override {
    for (int i = 0; i < Count(); ++i) (*this)[i].~T();
    kovaArrayClear(array_);
  }
  ~KOVADynamicArray() override { kovaArrayFree(array_, this); }

  // Elements in the array.
  int Count() const { return kovaArrayCount(array_); }

  // Appends `element`. Throws std::bad_alloc and leaves the array as it was.
  void Add(T element) {
    if (array_->count < array_->room) {
      new (static_cast<T*>(kovaArrayData(array_)) + array_->count) T(std::move(element));
      ++array_->count;
    } else {
      AddGrowing(std::move(element));
    }
  }

  // REQUIRES: 0 <= index < Count().
  T& operator[](int index) { return static_cast<T*>(kovaArrayData(array_))[index]; }
  // REQUIRES: 0 <= index < Count().
  const T& operator[](int index) const { return static_cast<T*>(kovaArrayData(array_))[index]; }

  // Exchanges the elements and the room of both.
  void Swap(KOVADynamicArray& other) noexcept { std::swap(array_, other.array_); }

 private:
  // The array takes the element's bytes over, and with them its life.
  void AddGrowing(T element) {
    union Slot {
      Slot() {}
      ~Slot() {}
      T value;
    } slot;
    new (&slot.value) T(std::move(element));
    struct Undo {
      Slot* slot;
      ~Undo() {
        if (slot != nullptr) slot->value.~T();
      }
    } undo{&slot};
    kovaArrayAdd(array_, &slot.value);
    undo.slot = nullptr;
  }

  KOVAArrayHeader* array_;
};
