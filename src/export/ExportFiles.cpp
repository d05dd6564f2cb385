#include "export/ExportFiles.h"

#include <fmt/format.h>

#include "export/AdmFile.h"
#include "export/CheckedFormat.h"
#include "export/Messages.h"
#include "export/RegFile.h"

namespace brenvik {

RegForm regForm(const Settings& einstellungen) {
    if (einstellungen.RegFileChecked) return RegForm::Checked;
    return einstellungen.RegFileClasic ? RegForm::Classic : RegForm::Neu;
}

std::vector<std::string> fileHeader(const TipdbContext& ctx) {
    const auto head = RegFileHeader(ctx, true);
    return {head.begin() + 1, head.end()};
}

namespace {

ExportFile refused(const char* text, const std::vector<std::string>& paths) {
    ExportFile file;
    file.obstacle = fmt::format(fmt::runtime(text), listed(paths));
    return file;
}

ExportFile checked(const TipdbContext& ctx, const ExportRecord& item, RegForm form) {
    ExportFile file;
    if (!item.obstacles.empty()) {
        file.obstacle = item.obstacles.front();
        return file;
    }
    const auto format = form == RegForm::Checked ? RegTextWriter::Format::Version5 : RegTextWriter::Format::Regedit4;
    CheckedFile content = CheckedFormat(item, format, fileHeader(ctx));
    if (form == RegForm::Checked && !content.missing.empty()) return refused(messages::NotShowable, content.missing);
    file.bytes = std::move(content.bytes);
    file.leftOut = std::move(content.missing);
    file.withoutValues = item.anzahl() == file.leftOut.size();
    return file;
}

// Values for which the test holds, of all entries or of those that are not deleted.
template <class Test> std::vector<std::string> pathsOf(const TipList& liste, bool withDeleted, const Test& test) {
    std::vector<std::string> paths;
    for (const TippListEintrag& entry : liste)
        for (const TipListValue& value : entry.Values)
            if ((withDeleted || !entry.Geloescht) && test(value)) paths.push_back(value.pfad());
    return paths;
}

// The told form writes all of these as they are.
bool forgesLines(const TipListValue& value) {
    const bool plainData = value.Datentyp == regtype::Sz || value.Datentyp == regtype::Binary || value.Datentyp == regtype::Dword;
    return breaksLine(value.Unterschluessel) || breaksLine(value.Wertname) || (plainData && forgesRegLine(value.Wert));
}

bool forgesPolicies(const TipListValue& value) {
    return hasControls(value.Unterschluessel) || hasControls(value.Wertname) || hasControls(value.WertEin) || hasControls(value.WertAus) ||
           hasControls(value.Standardwert);
}

}  // namespace

ExportFile regFileExport(const TipdbContext& ctx, const TipList& liste, bool blnListe, RegForm form) {
    const ExportRecord item = exportValues(liste);
    if (form == RegForm::Checked || form == RegForm::CheckedRegedit4) return checked(ctx, item, form);
    if (const auto paths = pathsOf(liste, false, forgesLines); !paths.empty()) return refused(messages::BreaksLines, paths);
    const bool classic = form == RegForm::Classic;
    const auto head = RegFileHeader(ctx, classic);
    AnsiText out;
    out.line(head[0]);
    out.line();
    for (std::size_t i = 1; i < head.size(); ++i) out.line(head[i]);
    if (blnListe)
        RegFileListeSchreiben(out, liste, classic);
    else
        for (const TippListEintrag& tipp : liste) RegFileTippSchreiben(out, tipp, classic);
    ExportFile file;
    file.bytes = out.bytes();
    file.missingCharacters = out.missing();
    file.differing = differences(file.bytes, item);
    return file;
}

ExportFile admFile(const TipdbContext& ctx, const TipList& liste) {
    if (const auto paths = pathsOf(liste, true, forgesPolicies); !paths.empty()) return refused(messages::BreaksLines, paths);
    const auto head = RegFileHeader(ctx, true);
    AnsiText out;
    out.line("; ADM-File für den MS Policy-Editor");
    out.line();
    for (std::size_t i = 2; i < head.size(); ++i) out.line(head[i]);
    out.line();
    const auto& shown = ctx.aktuellerTipp.Eintrag;
    ExportFile file;
    file.differing = ADMDateiSchreiben(out, liste, ctx.udtGruppen, shown.size() > 1 ? shown[1].Ausgabeart : std::int16_t{0});
    file.bytes = out.bytes();
    file.missingCharacters = out.missing();
    return file;
}

std::string hint(const ExportFile& datei, const char* roadToChecked, std::size_t most) {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : "\r\n\r\n") + part; };
    if (datei.missingCharacters > 0) add(fmt::format(messages::CharactersReplaced, datei.missingCharacters));
    if (const std::size_t count = datei.differing.size(); count > 0) {
        const std::string names = listed(datei.differing, most);
        add(roadToChecked != nullptr ? fmt::format(messages::ArrivesChanged, count, names, roadToChecked) : fmt::format(messages::AdmCannotSay, count, names));
    }
    if (datei.withoutValues) add(messages::NoValues);
    return text;
}

}  // namespace brenvik
