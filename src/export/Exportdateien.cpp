#include "export/Exportdateien.h"

#include <fmt/format.h>

#include "export/AdmDatei.h"
#include "export/GeprueftesFormat.h"
#include "export/Meldungen.h"
#include "export/RegDatei.h"

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

Exportdatei geprueft(const TipdbContext& ctx, const Exportsatz& satz, RegForm form) {
    Exportdatei file;
    if (!satz.hindernisse.empty()) {
        file.hindernis = satz.hindernisse.front();
        return file;
    }
    const auto format = form == RegForm::Geprueft ? RegTextWriter::Format::Version5 : RegTextWriter::Format::Regedit4;
    const GepruefteDatei content = GeprueftesFormat(satz, format, dateikopf(ctx));
    file.bytes = content.bytes;
    file.fehlendeZeichen = content.verloren;
    file.ohneWerte = satz.anzahl() == 0;
    return file;
}

}  // namespace

Exportdatei regDatei(const TipdbContext& ctx, const TippListe& liste, bool blnListe, RegForm form) {
    const Exportsatz satz = exportwerte(liste);
    if (form == RegForm::Geprueft || form == RegForm::GeprueftRegedit4) return geprueft(ctx, satz, form);
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
    return {out.bytes(), out.missing(), abweichungen(out.bytes(), satz), false, {}};
}

Exportdatei admDatei(const TipdbContext& ctx, const TippListe& liste) {
    const auto head = RegFileKopf(ctx, true);
    AnsiText out;
    out.line("; ADM-File für den MS Policy-Editor");
    out.line();
    for (std::size_t i = 2; i < head.size(); ++i) out.line(head[i]);
    out.line();
    const auto& shown = ctx.aktuellerTipp.Eintrag;
    ADMDateiSchreiben(out, liste, ctx.udtGruppen, shown.size() > 1 ? shown[1].Ausgabeart : std::int16_t{0});
    return {out.bytes(), out.missing(), 0, false, {}};
}

std::string hinweis(const Exportdatei& datei, const char* wegZumGeprueften) {
    std::string text;
    const auto add = [&](const std::string& part) { text += (text.empty() ? "" : "\r\n\r\n") + part; };
    if (datei.fehlendeZeichen > 0) add(fmt::format(meldung::ZeichenErsetzt, datei.fehlendeZeichen));
    if (datei.abweichend > 0) add(fmt::format(meldung::KommtAndersAn, datei.abweichend, wegZumGeprueften));
    if (datei.ohneWerte) add(meldung::KeineWerte);
    return text;
}

}  // namespace brenvik
