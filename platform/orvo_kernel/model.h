#pragma once

#include <string>
#include <vector>

#include "orvo_kernel/entity.h"
#include "orvo_kernel/lists.h"

// --- Topology ------------------------------------------------------------------------------------

class VERTEX : public ENTITY {
  ORVO_ENTITY_IDENTITY(VERTEX, ENTITY)
};
ORVO_ENTITY_TEST(VERTEX);

class EDGE : public ENTITY {
  ORVO_ENTITY_IDENTITY(EDGE, ENTITY)

 public:
  EDGE(VERTEX* start, VERTEX* end) : start_(start), end_(end) {}

  // Either may be null; both are the same on a closed edge.
  VERTEX* start() const { return start_; }
  VERTEX* end() const { return end_; }

 private:
  VERTEX* start_;
  VERTEX* end_;
};
ORVO_ENTITY_TEST(EDGE);

class FACE : public ENTITY {
  ORVO_ENTITY_IDENTITY(FACE, ENTITY)

 public:
  explicit FACE(std::vector<EDGE*> edges) : edges_(std::move(edges)) {}

  const std::vector<EDGE*>& edges() const { return edges_; }

 private:
  friend struct entity_fields;

  std::vector<EDGE*> edges_;
};
ORVO_ENTITY_TEST(FACE);

// A solid or sheet body of faces, or a wire body of edges only.
class BODY : public ENTITY {
  ORVO_ENTITY_IDENTITY(BODY, ENTITY)

 public:
  BODY(std::vector<FACE*> faces, std::vector<EDGE*> wires, std::vector<VERTEX*> points)
      : faces_(std::move(faces)), wires_(std::move(wires)), points_(std::move(points)) {}

  const std::vector<FACE*>& faces() const { return faces_; }
  // Edges that bound no face.
  const std::vector<EDGE*>& wires() const { return wires_; }
  // Vertices that end no edge.
  const std::vector<VERTEX*>& points() const { return points_; }

 private:
  friend struct entity_fields;

  std::vector<FACE*> faces_;
  std::vector<EDGE*> wires_;
  std::vector<VERTEX*> points_;
};
ORVO_ENTITY_TEST(BODY);

// 1 for a body without faces, else 0.
int is_wire_body(const ENTITY* entity);

// --- Groups and collections ----------------------------------------------------------------------

class QENGROUP : public ENTITY {
  ORVO_ENTITY_IDENTITY(QENGROUP, ENTITY)

 public:
  const ENTITY_LIST& members() const { return members_; }

 private:
  friend struct entity_fields;

  ENTITY_LIST members_;
};
ORVO_ENTITY_TEST(QENGROUP);

class QENCOLLECTION : public ENTITY {
  ORVO_ENTITY_IDENTITY(QENCOLLECTION, ENTITY)

 public:
  const ENTITY_LIST& members() const { return members_; }

 private:
  friend struct entity_fields;

  ENTITY_LIST members_;
};
ORVO_ENTITY_TEST(QENCOLLECTION);

// --- Named attributes ----------------------------------------------------------------------------

// An attribute that is found by its name.
class ATTRIB_GEN_NAME : public ATTRIB {
  ORVO_ENTITY_IDENTITY(ATTRIB_GEN_NAME, ATTRIB)

 public:
  ATTRIB_GEN_NAME(ENTITY* owner, std::string name) : ATTRIB(owner), name_(std::move(name)) {}

  const char* name() const { return name_.c_str(); }

 private:
  std::string name_;
};
ORVO_ENTITY_TEST(ATTRIB_GEN_NAME);

class ATTRIB_GEN_INTEGER : public ATTRIB_GEN_NAME {
  ORVO_ENTITY_IDENTITY(ATTRIB_GEN_INTEGER, ATTRIB_GEN_NAME)

 public:
  ATTRIB_GEN_INTEGER(ENTITY* owner, std::string name, int value)
      : ATTRIB_GEN_NAME(owner, std::move(name)), value_(value) {}

  int value() const { return value_; }

 private:
  int value_;
};
ORVO_ENTITY_TEST(ATTRIB_GEN_INTEGER);

// A narrow string in the process's multibyte encoding.
class ATTRIB_GEN_STRING : public ATTRIB_GEN_NAME {
  ORVO_ENTITY_IDENTITY(ATTRIB_GEN_STRING, ATTRIB_GEN_NAME)

 public:
  // A null `value` is kept as null.
  ATTRIB_GEN_STRING(ENTITY* owner, std::string name, const char* value)
      : ATTRIB_GEN_NAME(owner, std::move(name)),
        null_(value == nullptr),
        value_(null_ ? "" : value) {}

  const char* value() const { return null_ ? nullptr : value_.c_str(); }

 private:
  bool null_;
  std::string value_;
};
ORVO_ENTITY_TEST(ATTRIB_GEN_STRING);

class ATTRIB_GEN_WSTRING : public ATTRIB_GEN_NAME {
  ORVO_ENTITY_IDENTITY(ATTRIB_GEN_WSTRING, ATTRIB_GEN_NAME)

 public:
  // A null `value` is kept as null.
  ATTRIB_GEN_WSTRING(ENTITY* owner, std::string name, const wchar_t* value)
      : ATTRIB_GEN_NAME(owner, std::move(name)),
        null_(value == nullptr),
        value_(null_ ? L"" : value) {}

  const wchar_t* value() const { return null_ ? nullptr : value_.c_str(); }

 private:
  bool null_;
  std::wstring value_;
};
ORVO_ENTITY_TEST(ATTRIB_GEN_WSTRING);
