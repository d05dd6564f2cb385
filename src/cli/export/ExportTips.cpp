#include "cli/export/ExportTips.h"

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <iostream>

#include "cli/NumberOption.h"
#include "cli/registry/RegistryOutput.h"
#include "export/ExportValues.h"
#include "frame/files/FileSystem.h"
#include "frame/text/ShownOutput.h"

namespace brenvik::cli {
namespace {

struct Setting {
    std::int32_t tipp = 0;
    std::int32_t eintrag = 1;
    std::string text;
};

std::optional<Setting> parseSetting(const std::string& argument) {
    const std::size_t equals = argument.find('=');
    if (equals == std::string::npos) return std::nullopt;
    Setting set;
    set.text = argument.substr(equals + 1);
    const char* const end = argument.data() + equals;
    auto read = std::from_chars(argument.data(), end, set.tipp);
    if (read.ec == std::errc() && read.ptr != end && *read.ptr == ':') read = std::from_chars(read.ptr + 1, end, set.eintrag);
    return read.ec == std::errc() && read.ptr == end ? std::optional(set) : std::nullopt;
}

// German: why the Tip on screen cannot be exported; empty: it can.
std::string objection(const Tipp& tipp, const TippListEintrag& entry, Needs needs) {
    if (tipp.INITipp) return "Die Werte stehen in einer Datei, nicht in der Registry";
    if (needs == Needs::Template) return tipp.ADMExport ? std::string() : "Er ist nicht für Vorlagen freigegeben";
    for (std::size_t i = 0; i < entry.Values.size(); ++i) {
        const GatheredValue& value = entry.Values[i].gathered;
        if (value.touched && !value.unfit.empty()) return value.unfit;
        if (value.touched && value.text.empty()) return emptyTextRefused(static_cast<std::int32_t>(i) + 1);
    }
    return exportValues({entry}).anzahl() > 0 ? std::string() : "In der Registry steht kein Wert, und es wurde keiner gesetzt";
}

}  // namespace

void TipChoice::addTo(CLI::App& command, bool withOutput) {
    command.add_option("TIP", tipps, "Nummern der Tipps")->transform(wholeNumber<std::int32_t>())->required();
    command.add_option("--set", set_, "NUMBER=TEXT oder NUMBER:ENTRY=TEXT: den Wert für die Datei so wählen, <delkey>: ihn löschen; die Registry bleibt, wie sie ist")
        ->allow_extra_args(false)->take_all();
    if (withOutput) command.add_option("-o,--output", output, "Datei; eine vorhandene wird ersetzt. Ohne sie geht der Inhalt auf die Standardausgabe");
}

std::string setEntry(TipEngine& engine, std::int32_t entry, const std::string& text) {
    if (std::string refusal = engine.setEntryFromText(entry, text); !refusal.empty()) return refusal;
    if (!text.empty() || !engine.shownText(static_cast<std::int16_t>(entry)).empty()) return {};
    return emptyTextRefused(entry);
}

std::string emptyTextRefused(std::int32_t entry) {
    return "Ein leerer Text wird nicht gespeichert (Eintrag " + std::to_string(entry) + "): der Wert bliebe, wie er ist. In Textfeldern löscht ihn der Text \"<delkey>\".";
}

std::optional<TipList> gather(Program& program, const TipChoice& choice, Needs needs) {
    TipEngine& engine = program.engine();
    Context& ctx = program.context();
    std::vector<Setting> sets;
    for (const std::string& argument : choice.set_) {
        const auto set = parseSetting(argument);
        if (!set || std::find(choice.tipps.begin(), choice.tipps.end(), set->tipp) == choice.tipps.end())
            return failed("--set erwartet NUMBER=TEXT oder NUMBER:ENTRY=TEXT mit einem der genannten Tipps: " + argument), std::nullopt;
        sets.push_back(*set);
    }
    TipList list;
    bool ok = true;
    const auto complain = [&](std::int32_t number, const std::string& text) {
        std::cerr << "Tipp " << number << ": " << text << "\n";
        ok = false;
    };
    for (const std::int32_t number : choice.tipps) {
        if (std::any_of(list.begin(), list.end(), [&](const TippListEintrag& own) { return own.TippNr == number; })) continue;
        if (!engine.lookUpTip(number)) {
            complain(number, "Den Tipp gibt es nicht");
            continue;
        }
        engine.inspectTip(number);
        std::string refusal;
        for (const Setting& set : sets)
            if (set.tipp == number && refusal.empty()) refusal = setEntry(engine, set.eintrag, set.text);
        if (!refusal.empty()) {
            complain(number, refusal);
            continue;
        }
        if (!engine.collectForExport()) return std::nullopt;
        TippListEintrag entry = listEntry(ctx.aktuellerTipp, engine.collectedValues());
        if (const std::string reason = objection(ctx.aktuellerTipp, entry, needs); !reason.empty()) complain(number, reason);
        takeTexts(entry);
        list.push_back(std::move(entry));
    }
    return ok ? std::optional(std::move(list)) : std::nullopt;
}

int print(Program& program, const std::string& file, const std::string& bytes, const std::string& done1, const std::string& done2) {
    if (file.empty()) {
        errno = 0;
        ShownOutput::putRaw(std::cout, bytes);
        if (std::cout.flush()) return 0;
        return failed("Die Ausgabe konnte nicht geschrieben werden. " + fileErrorText(std::error_code(errno, std::generic_category())));
    }
    writeFileAtomic(pathFromUtf8(file), bytes);
    program.context().port.tell(done1 + file + done2);
    return 0;
}

int obstacles(const std::vector<std::string>& lines, const char* was) {
    for (const std::string& line : lines) std::cerr << line << "\n";
    return failed(was);
}

}  // namespace brenvik::cli
