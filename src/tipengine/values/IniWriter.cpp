#include "tipengine/values/IniWriter.h"

#include <algorithm>
#include <fmt/format.h>
#include <map>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/files/ProfileFile.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

constexpr std::size_t IniLength = 255;   // characters that are read of a value

// In German why an INI file cannot hold the text so that it is read again; empty: it can.
std::string refusalOf(const std::string& text) {
    if (text.find_first_of(std::string("\r\n\0", 3)) != std::string::npos) return fmt::format(messages::ValueUnfit, text, "INI-Eintrag");
    if (textLength(text) > IniLength) return fmt::format(messages::IniZuLang, textLength(text), IniLength);
    return {};
}

// Puts the value of an entry into the file's content. Answers an empty text, or in German why it cannot stand there.
std::string putValue(ProfileFile& content, const TipEntry& e, const WorkingValue& w, bool loeschen) {
    try {
        const auto present = content.value(e.Schlüssel, e.Wertname, 0);
        if (!loeschen && !w.touched && present) return {};   // made by somebody else since it was read
        if (loeschen || w.strAnzeigeWert == DelKey) {
            content.removeKey(e.Schlüssel, e.Wertname);
            return {};
        }
        if (const std::string refusal = refusalOf(w.strAnzeigeWert); !refusal.empty()) return refusal;
        if (kindOf(e).typed && present && *present != Left(*present, IniLength) && w.strAnzeigeWert != e.Standardwert)
            return fmt::format(messages::IniShownInPart, e.Wertname);
        content.setValue(e.Schlüssel, e.Wertname, w.strAnzeigeWert);
        return {};
    } catch (const NumberedError& error) {
        return error.what() + std::string(messages::NothingChanged);
    }
}

}  // namespace

// The entry whose panel writes a section of a file itself.
std::optional<std::int16_t> IniWriter::sectionEntry() const {
    for (const Panel& panel : tip_.window().panels)
        if (kindOf(panel).section) return panel.entries.front();
    return std::nullopt;
}

// The files with what is to stand in them, before any is written. A value that no INI file can hold refuses the whole save.
void IniWriter::planIniFiles(bool loeschen, Change& change, std::string& refusal, const std::function<bool(const std::string& path)>& mayBeMade) {
    std::map<std::filesystem::path, ProfileFile> loaded;
    for (std::int16_t i = 1; i <= lastEntry(); ++i) {
        if (kindOf(eintrag(i)).section) continue;
        const WorkingValue& w = wert(i);
        const bool untouched = !w.touched && (w.gefunden || writer_.speakerOf(i) != i);
        if (!loeschen && (untouched || w.strAnzeigeWert.empty())) continue;
        const auto file = files_.file(i);
        auto found = loaded.find(file);
        if (found == loaded.end()) {
            std::error_code error;
            const bool there = std::filesystem::is_regular_file(file, error);
            if (!there && !mayBeMade(files_.path(i))) continue;
            found = loaded.emplace(file, there ? TipFiles::load(file) : ProfileFile()).first;
            change.dateien.push_back({file.string(), found->second.bytes(), there, {}, false});
        }
        refusal = putValue(found->second, eintrag(i), w, loeschen);
        if (!refusal.empty()) return;
    }
    for (FileImage& picture : change.dateien)
        if (const auto file = loaded.find(picture.datei); file != loaded.end()) picture.neu = file->second.bytes();
}

}  // namespace brenvik
