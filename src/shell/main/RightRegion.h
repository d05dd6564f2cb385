#pragma once
// What the frames in the right region leave free of its width, which runs from the vertical splitter to the window's edge.
#include "shell/widgets/Twips.h"

namespace brenvik::rightregion {

// Twips
inline constexpr double Frames = 60;        // fraBVKLogo, and with it fraBVKAusgabe, fraInfo and fraSteuerung
inline constexpr double txtInfo = 250, fraEinstellungen = 500, fraListe = 220, lvListe = 370, lblDBTippU = 170;

inline constexpr int FrameWidth = 1;        // pixels, on each side

// Pixels that a child leaves free inside of the frame around it, left and right together.
inline int within(double outer, double inner) { return toPixels(inner) - toPixels(outer) - 2 * FrameWidth; }

}  // namespace brenvik::rightregion
