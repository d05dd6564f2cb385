#pragma once
// Values that are not to stand on the command line, where others may read them.
#include <string>
#include <vector>

namespace brenvik::cli {

inline constexpr const char* FromInput = "-";   // in the place of a value: it is read
inline constexpr const char* FromInputHelp = "; \"-\" liest ihn von der Standardeingabe, mit --value-fd von dem Deskriptor";

// What comes from the descriptor until its end, without one line end at its end. Throws NumberedError if it cannot be read.
std::string readValue(int descriptor);
// Puts what is read in the place of "-", of which there may be one; else error 5.
void fillFromInput(std::vector<std::string>& values, int descriptor);

}  // namespace brenvik::cli
