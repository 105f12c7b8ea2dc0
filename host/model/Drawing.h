#pragma once

#include <array>
#include <cstdint>
#include <string>
#include <vector>

// The shape of a part for a picture of it, beside the kernel model: lengths in the model's unit, in
// the model's coordinates. Knows nothing of the kernel.

using DrawnPoint = std::array<double, 3>;

// An edge as a polyline of at least two points.
struct DrawnEdge {
  std::string id;  // persistent, as the plug-in answers it for the edge
  std::vector<DrawnPoint> points;
  bool isHidden = false;  // by the document
};

// A face as triangles, counter-clockwise where seen from outside the part as far as the document
// tells. Triangles of one face share points; faces don't.
struct DrawnFace {
  std::string id;  // persistent, as the plug-in answers it for the face
  std::vector<DrawnPoint> points;
  std::vector<std::array<std::uint32_t, 3>> triangles;  // indices into `points`
  std::vector<std::string> edges;                       // ids of the edges that bound it
  bool isHidden = false;                                // by the document
};

// A vertex, at the end of an edge or free.
struct DrawnVertex {
  std::string id;  // persistent, as the plug-in answers it for the vertex
  DrawnPoint point;
  bool isHidden = false;  // by the document
};

// The edges, faces and vertices that could be read, in the document's order. One whose geometry
// could not be read is not here; the reader lists it among what it skipped.
struct Drawing {
  std::vector<DrawnEdge> edges;
  std::vector<DrawnFace> faces;
  std::vector<DrawnVertex> vertices;
};
