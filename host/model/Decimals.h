#pragma once

// The decimal places of a value or of limits that a document does not state.
constexpr double kNotStated = -1;

// a - b without what the subtraction of decimals leaves behind: 0.1 and not 0.10000000000000142.
double Difference(double a, double b);
