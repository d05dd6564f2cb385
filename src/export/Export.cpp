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

struct Export::SaveOrder {
    const char* proc;
    std::string filter, titel;
    std::string done1, done2;       // around the file name, once it is written
    const char* roadToChecked;       // of hinweis
    std::function<ExportFile()> contents;
};

bool writeFile(Context& ctx, const char* proc, const std::string& name, const std::string& bytes) {
    return reportAndGoOn(ctx, proc, [&] { writeFileAtomic(userPath(ctx, name), bytes); });
}

void Export::save(const SaveOrder& order) {
    const std::string name = ctx().port.chooseFile({{}, order.filter, order.titel, true}).value_or(std::string());
    ctx().click();
    if (name.empty()) return ctx().port.tell(strBVKTexte(TextCancelled));
    ExportFile file;
    if (!reportAndGoOn(ctx(), order.proc, [&] { file = order.contents(); })) return;
    if (!file.obstacle.empty()) return ctx().port.tell(file.obstacle, box::Exclamation);
    if (!writeFile(ctx(), order.proc, name, file.bytes)) return;
    ctx().port.tell(order.done1 + name + order.done2);
    if (const std::string more = hint(file, order.roadToChecked); !more.empty()) ctx().port.tell(more, box::Exclamation);
}

void Export::RegFileSave(bool blnListe) {
    ProcTrace trace(ctx().trace, "RegFileSave");
    trace.p(blnListe);
    TipList single;
    if (!blnListe) {
        if (!AddTippToList(single, false)) return;
        for (TippListEintrag& entry : single) takeTexts(entry);
    }
    const RegForm form = regForm(ctx().einstellungen);
    save({"RegFileSave", messages::RegFileFilter, strBVKTexte(TextFileName), strBVKTexte(TextRegSaved1), strBVKTexte(TextSaved2), messages::RoadWindow,
          [&] { return regFileExport(ctx(), blnListe ? listen_.RegListe : single, blnListe, form); }});
}

void Export::ADMFileSave(bool blnListe) {
    ProcTrace trace(ctx().trace, "ADMFileSave");
    trace.p(blnListe);
    TipList single;
    if (!blnListe && !AddTippToList(single, false)) return;
    save({"ADMFileSave", messages::AdmFileFilter, messages::AdmFileTitle, messages::AdmMade1, messages::AdmMade2, nullptr,
          [&] { return admFile(ctx(), blnListe ? listen_.ADMListe : single); }});
}

bool Export::AddTippToList(TipList& Liste, bool blnLeiste) {
    ProcTrace trace(ctx().trace, "AddTippToList");
    if (!engine_.collectForExport()) return false;
    TippListEintrag entry = listEntry(ctx().aktuellerTipp, engine_.collectedValues());
    const auto found = std::find_if(Liste.begin(), Liste.end(), [&](const TippListEintrag& own) { return own.TippNr == entry.TippNr; });
    if (found == Liste.end()) {
        Liste.push_back(std::move(entry));
        if (blnLeiste) {
            listeAktiv(true);
            tellAdded(listen_.blnADMListe ? messages::ToAdmList : messages::ToRegList, Liste, Liste.back());
        }
        return true;
    }
    for (std::size_t i = 0; i < found->Values.size() && i < entry.Values.size(); ++i) {
        found->Values[i].gathered = entry.Values[i].gathered;
        if (!listen_.blnADMListe) found->Values[i].Wert = entry.Values[i].gathered.text;
    }
    found->Geloescht = false;
    if (blnLeiste) {
        ADMListeAktiv(true);   // of either list
        tellAdded(listen_.blnADMListe ? messages::InAdmListNew : messages::InRegListNew, Liste, *found);
    }
    return true;
}

// In the status bar, beside the Tip's number, until another Tip is shown.
void Export::tellAdded(const char* what, const TipList& liste, const TippListEintrag& entry) {
    const auto count = std::count_if(liste.begin(), liste.end(), [](const TippListEintrag& each) { return !each.Geloescht; });
    ctx().frmBVK_Prog.sbrBVK[2] = fmt::format(messages::ListMessage, entry.TippNr, what, count);
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
