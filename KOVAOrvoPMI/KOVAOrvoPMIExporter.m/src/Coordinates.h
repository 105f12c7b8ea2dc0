#pragma once

// Copies the x, y and z of a position or a vector; a float gets the nearest value.
template <typename Triple, typename Number>
void CopyCoordinates(const Triple& from, Number* to) {
  to[0] = static_cast<Number>(from.x());
  to[1] = static_cast<Number>(from.y());
  to[2] = static_cast<Number>(from.z());
}
