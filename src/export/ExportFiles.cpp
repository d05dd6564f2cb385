#include "export/ExportFiles.h"

#include <fmt/format.h>

#include "export/AdmFile.h"
#include "export/CheckedFormat.h"
#include "export/Messages.h"
#include "export/RegFile.h"

namespace brenvik {

RegForm regForm(const Settings& einstellungen) {
    if (einstellungen.RegFileGeprueft) return RegForm::Geprueft;
    return einstellungen.RegFileClasic ? RegForm::Klassisch : RegForm::Neu;
}

std::vector<std::string> dateikopf(const TipdbContext& ctx) {
    const auto head = RegFileKopf(ctx, true);
    return {head.begin() + 1, head.end()};
}

namespace {

Exportdatei refused(const char* text, const std::vector<std::string>& paths) {
    Exportdatei file;
    file.hindernis = fmt::format(fmt::runtime(text), listed(paths));
    return file;
}

Exportdatei geprueft(const TipdbContext& ctx, const Exportsatz& satz, RegForm form) {
    Exportdatei file;
    if (!satz.hindernisse.empty()) {
        file.hindernis = satz.hindernisse.front();
        return file;
    }
    const auto format = form == RegForm::Geprueft ? RegTextWriter::Format::Version5 : RegTextWriter::Format::Regedit4;
    GepruefteDatei content = GeprueftesFormat(satz, format, dateikopf(ctx));
    if (form == RegForm::Geprueft && !content.fehlend.empty()) return refused(meldung::NichtDarstellbar, content.fehlend);
    file.bytes = std::move(content.bytes);
    file.weggelassen = std::move(content.fehlend);
    file.ohneWerte = satz.anzahl() == file.weggelassen.size();
    return file;
}

// Values for which the test holds, of all entries or of those that are not deleted.
template <class Test> std::vector<std::string> pathsOf(const TippListe& liste, bool withDeleted, const Test& test) {
    std::vector<std::string> paths;
    for (const TippListEintrag& entry : liste)
        for (const TippListWert& value : entry.Werte)
            if ((withDeleted || !entry.Geloescht) && test(value)) paths.push_back(value.pfad());
    return paths;
}

// The told form writes all of these as they are.
bool forgesLines(const TippListWert& value) {
    const bool plainData = value.Datentyp == regtype::Sz || value.Datentyp == regtype::Binary || value.Datentyp == regtype::Dword;
    return breaksLine(value.Unterschluessel) || breaksLine(value.Wertname) || (plainData && forgesRegLine(value.Wert));
}

bool forgesPolicies(const TippListWert& value) {
    return hasControls(value.Unterschluessel) || hasControls(value.Wertname) || hasControls(value.WertEin) || hasControls(value.WertAus) ||
           hasControls(value.Standardwert);
}

}  // namespace

Exportdatei regDatei(const TipdbContext& ctx, const TippListe& liste, bool blnListe, RegForm form) {
    const Exportsatz satz = exportwerte(liste);
    if (form == RegForm::Geprueft || form == RegForm::GeprueftRegedit4) return geprueft(ctx, satz, form);
    if (const auto paths = pathsOf(liste, false, forgesLines); !paths.empty()) return refused(meldung::BrichtZeilen, paths);
    const bool classic = form == RegForm::Klassisch;
    const auto head = RegFileKopf(ctx, classic);
    AnsiText out;
    out.line(head[0]);
    out.line();
    for (std::size_t i = 1; i < head.size(); ++i) out.line(head[i]);
    if (blnListe)
        RegFileListeSchreiben(out, liste, classic);
    else
        for (const TippListEintrag& tipp : liste) RegFileTippSchreiben(out, tipp, classic);
    Exportdatei file;
    file.bytes = out.bytes();
    file.fehlendeZeichen = out.missing();
    file.abweichend = abweichungen(file.bytes, satz);
    return file;
}

Exportdatei admDatei(const TipdbContext& ctx, const TippListe& liste) {
    if (const auto paths = pathsOf(liste, true, forgesPolicies); !paths.empty()) return refused(meldung::BrichtZeilen, paths);
    const auto head = RegFileKopf(ctx, true);
    AnsiText out;
    out.line("; ADM-File für den MS Policy-Editor");
    out.line();
    for (std::size_t i = 2; i < head.size(); ++i) out.line(head[i]);
    out.line();
    const auto& shown = ctx.aktuellerTipp.Eintrag;
    Exportdatei file;
    file.abweichend = ADMDateiSchreiben(out, liste, ctx.udtGruppen, shown.size() > 1 ? shown[1].Ausgabeart : std::int16_t{0});
    file.bytes = out.bytes();
    file.fehlendeZeichen = out.missing();
    return file;
}

std::string hinweis(const Exportdatei& datei, const char* wegZumGeprueften, std::size_t most) {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : "\r\n\r\n") + part; };
    if (datei.fehlendeZeichen > 0) add(fmt::format(meldung::ZeichenErsetzt, datei.fehlendeZeichen));
    if (const std::size_t count = datei.abweichend.size(); count > 0) {
        const std::string names = listed(datei.abweichend, most);
        add(wegZumGeprueften != nullptr ? fmt::format(meldung::KommtAndersAn, count, names, wegZumGeprueften) : fmt::format(meldung::AdmSagtNicht, count, names));
    }
    if (datei.ohneWerte) add(meldung::KeineWerte);
    return text;
}

}  // namespace brenvik
