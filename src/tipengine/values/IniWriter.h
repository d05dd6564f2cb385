#pragma once
// Tips whose values lie in an INI file: what is to stand in the files, decided before any is written.
#include <functional>

#include "tipengine/values/ValueWriter.h"

namespace brenvik {

class IniWriter : private TipPart {
public:
    IniWriter(CurrentTip& tip, TipFiles& files, const ValueWriter& writer) : TipPart(tip), files_(files), writer_(writer) {}

    // The files with their new bytes. refusal tells why a value cannot stand in one; mayBeMade is asked about files that are not there.
    void planIniFiles(bool loeschen, Change& change, std::string& refusal, const std::function<bool(const std::string& path)>& mayBeMade);
    std::optional<std::int16_t> sectionEntry() const;    // whose panel writes a section of a file itself

private:
    TipFiles& files_;
    const ValueWriter& writer_;
};

}  // namespace brenvik
