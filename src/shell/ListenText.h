#pragma once
#include <QString>

#include "shell/QtText.h"

namespace brenvik {

// A value's text for one line of a list: control characters as their pictures.
inline QString oneLine(std::string_view text) {
    QString line = qt(text);
    for (QChar& c : line)
        if (c.unicode() < 0x20) c = QChar(0x2400 + c.unicode());
    return line;
}

}  // namespace brenvik
