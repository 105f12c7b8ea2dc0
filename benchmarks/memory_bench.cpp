// What the index holds for an annotation, in bytes as the allocator counts them.
#include <atomic>
#include <new>

#include "Measure.h"
#include "Models.h"
#include "orvo_kernel/geometry.h"
#include "standin/Control.h"

namespace {

std::atomic<long> bytes{0};

void* Allocate(std::size_t size) {
  void* storage = std::malloc(size);
  if (storage == nullptr) throw std::bad_alloc();
  bytes += static_cast<long>(malloc_usable_size(storage));
  return storage;
}

void Free(void* storage) {
  bytes -= static_cast<long>(malloc_usable_size(storage));
  std::free(storage);
}

}  // namespace

void* operator new(std::size_t size) { return Allocate(size); }
void* operator new[](std::size_t size) { return Allocate(size); }
void operator delete(void* storage) noexcept { Free(storage); }
void operator delete[](void* storage) noexcept { Free(storage); }
void operator delete(void* storage, std::size_t) noexcept { Free(storage); }
void operator delete[](void* storage, std::size_t) noexcept { Free(storage); }

namespace {

// Bytes that `make` leaves allocated, the kernel's storage of entities included.
template <typename Make>
long Left(Make make) {
  const long before = bytes + standin::Count().trackedBytes;
  make();
  return bytes + standin::Count().trackedBytes - before;
}

// The stand-in's registry of what lives is no part of the index. What it takes for the planes is
// found by making as many by themselves, a second time, with the registry's buckets in place.
long RegistryBytes(int planes) {
  std::vector<PLANE*> made(static_cast<std::size_t>(planes));
  long all = 0;
  for (int time = 0; time < 2; ++time) {
    all = Left([&] {
      for (PLANE*& each : made) each = new (1, __FILE__, __LINE__) PLANE(plane());
    });
    for (PLANE* each : made) delete each;
  }
  return all - planes * static_cast<long>(sizeof(PLANE));
}

void Memory(benchmark::State& state, models::Placement placement, int annotations) {
  const auto part = models::Dense(annotations, models::kPlainKinds, placement);
  const int planes = placement == models::InPlanes ? annotations : 0;
  for (auto _ : state) {
    const long registry = RegistryBytes(planes);
    models::Exporter exporter;
    const long all = Left([&] { exporter = models::Index(*part); });
    state.counters["bytes"] = static_cast<double>(all - registry) / annotations;
  }
}

}  // namespace

int main(int argc, char** argv) {
  // Over a doubling, since arrays that grow by doubling leave more or less room.
  for (int annotations = 20000; annotations < 40000; annotations += 2000) {
    const std::string size = std::to_string(annotations);
    measure::Register("memory_planes:" + size, 1,
                      [=](auto& state) { Memory(state, models::InPlanes, annotations); });
    measure::Register("memory_null:" + size, 1,
                      [=](auto& state) { Memory(state, models::InNullView, annotations); });
  }
  return measure::Run(argc, argv);
}
