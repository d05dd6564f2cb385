#include "export/Export.h"

#include <algorithm>
#include <fmt/format.h>

#include "export/Messages.h"
#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Texts.h"

namespace brenvik {

namespace {

constexpr int TextFileName = 110, TextRegSaved1 = 113, TextSaved2 = 114, TextCancelled = 203;

}  // namespace

struct Export::Speicherauftrag {
    const char* proc;
    std::string filter, titel;
    std::string fertig1, fertig2;       // around the file name, once it is written
    const char* wegZumGeprueften;       // of hinweis
    std::function<Exportdatei()> inhalt;
};

bool schreibeDatei(Context& ctx, const char* proc, const std::string& name, const std::string& bytes) {
    return reportAndGoOn(ctx, proc, [&] { writeFileAtomic(userPath(ctx, name), bytes); });
}

void Export::save(const Speicherauftrag& order) {
    const std::string name = ctx().port.chooseFile({{}, order.filter, order.titel, true}).value_or(std::string());
    ctx().klick();
    if (name.empty()) return ctx().port.tell(strBVKTexte(TextCancelled));
    Exportdatei file;
    if (!reportAndGoOn(ctx(), order.proc, [&] { file = order.inhalt(); })) return;
    if (!file.hindernis.empty()) return ctx().port.tell(file.hindernis, box::Exclamation);
    if (!schreibeDatei(ctx(), order.proc, name, file.bytes)) return;
    ctx().port.tell(order.fertig1 + name + order.fertig2);
    if (const std::string more = hinweis(file, order.wegZumGeprueften); !more.empty()) ctx().port.tell(more, box::Exclamation);
}

void Export::RegFileSave(bool blnListe) {
    ProcTrace trace(ctx().trace, "RegFileSave");
    trace.p(blnListe);
    TippListe single;
    if (!blnListe) {
        if (!AddTippToList(single, false)) return;
        for (TippListEintrag& entry : single) uebernehmeTexte(entry);
    }
    const RegForm form = regForm(ctx().einstellungen);
    save({"RegFileSave", meldung::RegDateiFilter, strBVKTexte(TextFileName), strBVKTexte(TextRegSaved1), strBVKTexte(TextSaved2), meldung::WegFenster,
          [&] { return regDatei(ctx(), blnListe ? listen_.RegListe : single, blnListe, form); }});
}

void Export::ADMFileSave(bool blnListe) {
    ProcTrace trace(ctx().trace, "ADMFileSave");
    trace.p(blnListe);
    TippListe single;
    if (!blnListe && !AddTippToList(single, false)) return;
    save({"ADMFileSave", meldung::AdmDateiFilter, meldung::AdmDateiTitel, meldung::AdmErstellt1, meldung::AdmErstellt2, nullptr,
          [&] { return admDatei(ctx(), blnListe ? listen_.ADMListe : single); }});
}

bool Export::AddTippToList(TippListe& Liste, bool blnLeiste) {
    ProcTrace trace(ctx().trace, "AddTippToList");
    if (!maschine_.collectForExport()) return false;
    TippListEintrag entry = listeneintrag(ctx().aktuellerTipp, maschine_.collectedValues());
    const auto found = std::find_if(Liste.begin(), Liste.end(), [&](const TippListEintrag& own) { return own.TippNr == entry.TippNr; });
    if (found == Liste.end()) {
        Liste.push_back(std::move(entry));
        if (blnLeiste) {
            listeAktiv(true);
            tellAdded(listen_.blnADMListe ? meldung::ZurAdmListe : meldung::ZurRegListe, Liste, Liste.back());
        }
        return true;
    }
    for (std::size_t i = 0; i < found->Werte.size() && i < entry.Werte.size(); ++i) {
        found->Werte[i].gesammelt = entry.Werte[i].gesammelt;
        if (!listen_.blnADMListe) found->Werte[i].Wert = entry.Werte[i].gesammelt.text;
    }
    found->Geloescht = false;
    if (blnLeiste) {
        ADMListeAktiv(true);   // of either list
        tellAdded(listen_.blnADMListe ? meldung::InAdmListeNeu : meldung::InRegListeNeu, Liste, *found);
    }
    return true;
}

// In the status bar, beside the Tip's number, until another Tip is shown.
void Export::tellAdded(const char* what, const TippListe& liste, const TippListEintrag& entry) {
    const auto count = std::count_if(liste.begin(), liste.end(), [](const TippListEintrag& each) { return !each.Geloescht; });
    ctx().frmBVK_Prog.sbrBVK[2] = fmt::format(meldung::ListenMeldung, entry.TippNr, what, count);
}

void Export::addRegListe() {
    listen_.blnADMListe = false;
    AddTippToList(listen_.RegListe);
}

void Export::addADMListe() {
    listen_.blnADMListe = true;
    AddTippToList(listen_.ADMListe);
}

void Export::showRegListe() {
    listen_.blnADMListe = false;
    showListe();
}

void Export::showADMListe() {
    listen_.blnADMListe = true;
    showListe();
}

}  // namespace brenvik
