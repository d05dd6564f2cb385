#pragma once
// What decides whether the program may run here: no other instance, colours, browser component; and its command line.
#include <functional>
#include <string>

#include "frame/Context.h"

namespace brenvik {

// The colours that so many bits (per pixel, times planes) give, as the user reads it; empty for a number without name.
std::string coloursText(std::int16_t bits);

// Answers false if the program has to end; the user has been told why, unless another instance took over. The debug flag
// is on from here until the command line has been looked at.
bool startCheck(FrameContext& ctx, const std::string& commandLine, const std::function<bool()>& anotherInstance);

}  // namespace brenvik
