#pragma once
// A tour of all windows of the program, each with something to see in it: for its pictures, and for checks that hold everywhere.
#include <functional>
#include <string>

#include "shell/program/WindowParts.h"

class QWidget;

namespace brenvik {

// name: of the window, with what tells several visits apart; "art1" to "art11" is the main window with a Tip of that kind.
using Visit = std::function<void(QWidget& window, const std::string& name)>;

// Throws NumberedError if a window does not open, and what the visitor throws.
void visitWindows(WindowParts& parts, const Visit& visit);

}  // namespace brenvik
