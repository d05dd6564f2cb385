// What the buttons of frmBVK_TippFileSave do.
#include <algorithm>
#include <fmt/format.h>

#include "export/Export.h"
#include "export/LineText.h"
#include "export/Messages.h"
#include "export/Preset.h"
#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Texts.h"

namespace brenvik {
namespace {

constexpr int TextTitleReg = 115, TextInfo = 116, TextDelete1 = 117, TextDelete2 = 118, TextDeleteAll = 119, TextTitleAdm = 201, TextSaved2 = 114;

}  // namespace

class Listenfenster {
public:
    explicit Listenfenster(Export& owner) : export_(owner), kopie_(owner.liste()) {
        fenster_.caption = strBVKTexte(owner.listen_.blnADMListe ? TextTitleAdm : TextTitleReg);
        fenster_.lblInfo = strBVKTexte(TextInfo);
        fillItems();
        fenster_.cmdSave = [this] { save(); };
        fenster_.cmdDel = [this](std::size_t item) { deleteItem(item); };
        fenster_.cmdDelAll = [this] { deleteAll(); };
        fenster_.cmdExit = [this] { ctx().klick(); };
        fenster_.cmdListeSpeichern = [this] { saveList(); };
        fenster_.cmdListeLaden = [this] { loadList(); };
    }
    void show() { ctx().port.showWindow(fenster_); }

    // False: there is nothing new, and the user knows why.
    bool loadList() {
        ctx().klick();
        const auto name = ctx().port.chooseFile({{}, meldung::ListenFilter, meldung::ListeLadenTitel, false});
        if (!name || name->empty()) return false;
        bool taken = false;
        reportAndGoOn(ctx(), "ListeLaden", [&] {
            const Presetliste loaded = ladePreset(export_.maschine_, readFile(userPath(ctx(), *name), MaxPreset));
            if (!loaded.probleme.empty()) return ctx().port.tell(fmt::format(meldung::ListeNichtGeladen, listed(loaded.probleme)), box::Exclamation);
            for (const TippListEintrag& entry : loaded.liste) take(entry);
            export_.liste() = kopie_;
            fillItems();
            taken = true;
            if (fenster_.lvRegList.empty()) return;
            fenster_.aktiv = true;
            export_.listeAktiv(true);
        });
        return taken;
    }

private:
    Context& ctx() { return export_.ctx(); }

    void fillItems() {
        fenster_.lvRegList.clear();
        for (const TippListEintrag& entry : kopie_)
            if (!entry.Geloescht) fenster_.lvRegList.push_back(entry.Titel);
    }

    void save() {
        ctx().klick();
        export_.listen_.blnADMListe ? export_.ADMFileSave(true) : export_.RegFileSave(true);
    }

    void deleteItem(std::size_t item) {
        if (item < fenster_.lvRegList.size()) {
            const std::string title = fenster_.lvRegList[item];
            if (ctx().port.ask(strBVKTexte(TextDelete1) + title + strBVKTexte(TextDelete2))) {
                for (TippListEintrag& entry : kopie_)
                    if (entry.Titel == title) entry.Geloescht = true;
                fenster_.lvRegList.erase(fenster_.lvRegList.begin() + static_cast<std::ptrdiff_t>(item));
            }
        }
        afterDeletion();
    }

    // As many elements as there are items, from the front: where deleted ones stand there, the last elements stay.
    void deleteAll() {
        if (!fenster_.lvRegList.empty() && ctx().port.ask(strBVKTexte(TextDeleteAll))) {
            for (std::size_t i = 0; i < fenster_.lvRegList.size() && i < kopie_.size(); ++i) kopie_[i].Geloescht = true;
            fenster_.lvRegList.clear();
        }
        afterDeletion();
    }

    void afterDeletion() {
        if (fenster_.lvRegList.empty()) {
            fenster_.aktiv = false;
            export_.listeAktiv(false);
        }
        export_.liste() = kopie_;
    }

    void saveList() {
        ctx().klick();
        const auto name = ctx().port.chooseFile({{}, meldung::ListenFilter, meldung::ListeSpeichernTitel, true});
        if (!name || name->empty()) return;
        const Presetdatei file = presetDatei(ctx(), kopie_);
        if (!file.hindernis.empty()) return ctx().port.tell(file.hindernis, box::Exclamation);
        if (!schreibeDatei(ctx(), "ListeSpeichern", *name, file.text)) return;
        ctx().port.tell(meldung::ListeGespeichert1 + *name + strBVKTexte(TextSaved2));
        if (!file.ohneWert.empty()) ctx().port.tell(fmt::format(meldung::OhneWerteGespeichert, file.ohneWert.size(), listed(file.ohneWert)), box::Information);
    }

    // In the place of an entry of the same Tip, or behind the last.
    void take(const TippListEintrag& entry) {
        const auto found = std::find_if(kopie_.begin(), kopie_.end(), [&](const TippListEintrag& own) { return own.TippNr == entry.TippNr; });
        if (found == kopie_.end())
            kopie_.push_back(entry);
        else
            *found = entry;
    }

    Export& export_;
    TippListe kopie_;
    TippFileSaveAnfrage fenster_;
};

void Export::showListe() { Listenfenster(*this).show(); }

void Export::loadListe() {
    listen_.blnADMListe = false;
    if (Listenfenster window(*this); window.loadList()) window.show();
}

}  // namespace brenvik
