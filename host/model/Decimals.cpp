#include "model/Decimals.h"

#include <algorithm>
#include <cmath>

double Difference(double a, double b) {
  const double largest = std::max(std::abs(a), std::abs(b));
  if (!(largest > 0)) return 0;
  const double scale = std::pow(10, 13 - std::floor(std::log10(largest)));
  const double scaled = (a - b) * scale;
  return std::isfinite(scaled) ? std::round(scaled) / scale : a - b;
}
