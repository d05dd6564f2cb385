#pragma once
// Stored measures are twips, 15 to a logical pixel.
#include <cmath>

namespace brenvik {

inline constexpr double TwipsPerPixel = 15.0;
inline int toPixels(double twips) { return static_cast<int>(std::lround(twips / TwipsPerPixel)); }
inline double toTwips(int pixels) { return pixels * TwipsPerPixel; }

}  // namespace brenvik
