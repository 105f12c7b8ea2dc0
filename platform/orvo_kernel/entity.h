#pragma once

#include <cstddef>

class ATTRIB;

// Starts and stops the kernel's memory manager. Starts are counted; each needs its stop.
void initialize_mmgr_system();
void terminate_mmgr_system();

// Root of what the kernel's tracked allocator makes.
class ORVO_OBJECT {
 public:
  // Storage of `size` bytes of a memory type, charged to a source line; null when there is none.
  static void* operator new(std::size_t size, int memoryType, const char* file, int line) noexcept;
  static void operator delete(void* storage, int memoryType, const char* file, int line) noexcept;
  static void operator delete(void* storage) noexcept;

 protected:
  ORVO_OBJECT() = default;
  ~ORVO_OBJECT() = default;
};

// Type codes of the kernel's entities. Codes of other libraries start at 100.
constexpr int ENTITY_TYPE = 0;
constexpr int ATTRIB_TYPE = 1;
constexpr int ATTRIB_GEN_NAME_TYPE = 2;
constexpr int ATTRIB_GEN_INTEGER_TYPE = 3;
constexpr int ATTRIB_GEN_STRING_TYPE = 4;
constexpr int ATTRIB_GEN_WSTRING_TYPE = 5;
constexpr int BODY_TYPE = 10;
constexpr int FACE_TYPE = 11;
constexpr int EDGE_TYPE = 12;
constexpr int VERTEX_TYPE = 13;
constexpr int APOINT_TYPE = 14;
constexpr int PLANE_TYPE = 15;
constexpr int QENGROUP_TYPE = 20;
constexpr int QENCOLLECTION_TYPE = 21;

// Everything that a model is made of. An entity lives from its construction until it is deleted;
// inside an open bulletin board its creation is recorded there.
class ENTITY : public ORVO_OBJECT {
 public:
  static constexpr int derivation_level = 0;

  ENTITY();
  ENTITY(const ENTITY&) = delete;
  ENTITY& operator=(const ENTITY&) = delete;
  virtual ~ENTITY();

  // The type code at a derivation level: 0 is the entity's own class, n > 0 the class n steps below
  // ENTITY that it derives from; -1 when its derivation is not that deep.
  virtual int identity(int level = 0) const;

  // The head of the entity's attribute chain, or null.
  ATTRIB* first_attribute() const { return firstAttribute_; }

 private:
  friend class ATTRIB;

  ATTRIB* firstAttribute_ = nullptr;
  ATTRIB* lastAttribute_ = nullptr;
};

// Declares the type identity of an entity class inside its body.
#define ORVO_ENTITY_IDENTITY(NAME, PARENT)                              \
 public:                                                                \
  static constexpr int derivation_level = PARENT::derivation_level + 1; \
  int identity(int level = 0) const override;                           \
                                                                        \
 private:

// Declares a class's type test: 1 for the class and every class derived from it, 0 for others and
// for null.
#define ORVO_ENTITY_TEST(NAME) int is_##NAME(const ENTITY* entity)

// Defines both in the class's source.
#define ORVO_ENTITY_FUNCTIONS(NAME, PARENT)                                                      \
  int NAME::identity(int level) const {                                                          \
    if (level == 0 || level == derivation_level) return NAME##_TYPE;                             \
    return PARENT::identity(level);                                                              \
  }                                                                                              \
  ORVO_ENTITY_TEST(NAME) {                                                                       \
    return entity != nullptr && entity->identity(NAME::derivation_level) == NAME##_TYPE ? 1 : 0; \
  }

// A piece of information that hangs on one entity, in that entity's chain.
class ATTRIB : public ENTITY {
  ORVO_ENTITY_IDENTITY(ATTRIB, ENTITY)

 public:
  // Joins the end of `owner`'s chain. REQUIRES: `owner` is not null.
  explicit ATTRIB(ENTITY* owner);

  ENTITY* owner() const { return owner_; }
  // The next attribute of the chain, or null.
  ATTRIB* next_attribute() const { return next_; }

 private:
  ENTITY* owner_;
  ATTRIB* next_ = nullptr;
};
ORVO_ENTITY_TEST(ATTRIB);
