#include <fmt/format.h>

#include "export/ExportValues.h"
#include "export/LineText.h"
#include "export/Preset.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

// In single quotes where TOML lets everything stand as it is, else with escapes.
std::string tomlText(std::string_view text) {
    bool plain = true;
    for (const char c : text) plain = plain && c != '\'' && static_cast<unsigned char>(c) >= ' ' && c != 0x7F;
    if (plain) return "'" + std::string(text) + "'";
    std::string out = "\"";
    for (const char c : text) {
        if (c == '"' || c == '\\')
            out += std::string{'\\', c};
        else if (c == '\n' || c == '\r' || c == '\t')
            out += c == '\n' ? "\\n" : c == '\r' ? "\\r" : "\\t";
        else if (static_cast<unsigned char>(c) < ' ' || c == 0x7F)
            out += fmt::format("\\u{:04X}", static_cast<unsigned char>(c));
        else
            out += c;
    }
    return out + '"';
}

// A file with anything but UTF-8 in it is no TOML any more.
std::string forPeople(const std::string& text) { return isUtf8(text) ? commentText(text) : std::string(); }

std::string valueLine(const RawValue& value) {
    const std::string bytes = "bytes = '" + bytesText(value.bytes) + "'";
    if (value.type == regtype::Dword) return value.bytes.size() == 4 ? "wert = " + numberText(static_cast<std::uint32_t>(toLng(toText(value)))) : bytes;
    if (value.type != regtype::Sz && value.type != regtype::ExpandSz && value.type != regtype::MultiSz) return bytes;
    const std::string text = toText(value);
    if (!isUtf8(text) || fromText(text, value.type) != value) return bytes;
    if (value.type != regtype::MultiSz) return "wert = " + tomlText(text);
    std::string list;
    for (const std::string& element : Split(text, std::string_view("\0", 1))) list += (list.empty() ? "" : ", ") + tomlText(element);
    return "wert = [" + list + "]";
}

}  // namespace

PresetFile presetFile(Context& ctx, const TipList& liste) {
    PresetFile file;
    const ExportRecord item = exportValues(liste);
    if (!item.obstacles.empty()) {
        file.obstacle = item.obstacles.front();
        return file;
    }
    file.text = fmt::format("# Einstellungen aus Brenvik. Anwenden: brenvik-cli apply DATEI --dry-run\n\nformat = 1\nprogramm = {}\ndatenbank = {}\n",
                            tomlText(ctx.strProgVersion), tomlText(ctx.strDBVersion));
    auto tipp = item.tipps.begin();
    for (const TippListEintrag& entry : liste) {
        if (entry.Geloescht) continue;
        file.text += fmt::format("\n[[tipp]]\nnummer = {}\ntitel = {}\n", entry.TippNr, tomlText(forPeople(entry.Titel)));
        auto next = tipp->values.begin();
        for (std::size_t i = 0; i < entry.Values.size(); ++i) {
            const TipListValue& value = entry.Values[i];
            const bool has = next != tipp->values.end() && next->source == i;
            if (!has || !isUtf8(value.Wertname) || (next->wert && !fitsTheType(next->wert->type, value.Datentyp))) {
                file.withoutValue.push_back(value.pfad());
                next += has;
                continue;
            }
            file.text += fmt::format("\n  [[tipp.wert]]   # {}\n  nummer = {}\n  name = {}\n", forPeople(value.Hauptschluessel + "\\" + value.Unterschluessel),
                                     value.TippIndex, tomlText(value.Wertname));
            if (next->wert)
                file.text += "  typ = " + tomlText(DatenTypText(ctx, static_cast<std::int32_t>(next->wert->type))) + "\n  " + valueLine(*next->wert) + "\n";
            else
                file.text += "  geloescht = true\n";
            ++next;
        }
        ++tipp;
    }
    return file;
}

}  // namespace brenvik
