#pragma once
// The program with its window: start, load sequence, run, end.
#include "tipengine/Programm.h"

class QApplication;

namespace brenvik {

struct FensterOptionen {
    ProgrammOptionen programm;
    std::filesystem::path screenshots;      // not empty: render the windows into this folder and end
};

// Answers the exit code of the process.
int runFensterprogramm(QApplication& application, const FensterOptionen& options);

}  // namespace brenvik
