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

class ListWindows {
public:
    explicit ListWindows(Export& owner) : export_(owner), copy_(owner.liste()) {
        windows_.caption = strBVKTexte(owner.listen_.blnADMListe ? TextTitleAdm : TextTitleReg);
        windows_.lblInfo = strBVKTexte(TextInfo);
        fillItems();
        windows_.cmdSave = [this] { save(); };
        windows_.cmdDel = [this](std::size_t item) { deleteItem(item); };
        windows_.cmdDelAll = [this] { deleteAll(); };
        windows_.cmdExit = [this] { ctx().click(); };
        windows_.cmdListeSpeichern = [this] { saveList(); };
        windows_.cmdListeLaden = [this] { loadList(); };
    }
    void show() { ctx().port.showWindow(windows_); }

    // False: there is nothing new, and the user knows why.
    bool loadList() {
        ctx().click();
        const auto name = ctx().port.chooseFile({{}, messages::ListenFilter, messages::ListLoadTitle, false});
        if (!name || name->empty()) return false;
        bool taken = false;
        reportAndGoOn(ctx(), "ListeLaden", [&] {
            const PresetList loaded = ladePreset(export_.engine_, readFile(userPath(ctx(), *name), MaxPreset));
            if (!loaded.problems.empty()) return ctx().port.tell(fmt::format(messages::ListNotLoaded, listed(loaded.problems)), box::Exclamation);
            for (const TippListEintrag& entry : loaded.liste) take(entry);
            export_.liste() = copy_;
            fillItems();
            taken = true;
            if (windows_.lvRegList.empty()) return;
            windows_.active = true;
            export_.listeAktiv(true);
        });
        return taken;
    }

private:
    Context& ctx() { return export_.ctx(); }

    void fillItems() {
        windows_.lvRegList.clear();
        for (const TippListEintrag& entry : copy_)
            if (!entry.Geloescht) windows_.lvRegList.push_back(entry.Titel);
    }

    void save() {
        ctx().click();
        export_.listen_.blnADMListe ? export_.ADMFileSave(true) : export_.RegFileSave(true);
    }

    void deleteItem(std::size_t item) {
        if (item < windows_.lvRegList.size()) {
            const std::string title = windows_.lvRegList[item];
            if (ctx().port.ask(strBVKTexte(TextDelete1) + title + strBVKTexte(TextDelete2))) {
                for (TippListEintrag& entry : copy_)
                    if (entry.Titel == title) entry.Geloescht = true;
                windows_.lvRegList.erase(windows_.lvRegList.begin() + static_cast<std::ptrdiff_t>(item));
            }
        }
        afterDeletion();
    }

    // As many elements as there are items, from the front: where deleted ones stand there, the last elements stay.
    void deleteAll() {
        if (!windows_.lvRegList.empty() && ctx().port.ask(strBVKTexte(TextDeleteAll))) {
            for (std::size_t i = 0; i < windows_.lvRegList.size() && i < copy_.size(); ++i) copy_[i].Geloescht = true;
            windows_.lvRegList.clear();
        }
        afterDeletion();
    }

    void afterDeletion() {
        if (windows_.lvRegList.empty()) {
            windows_.active = false;
            export_.listeAktiv(false);
        }
        export_.liste() = copy_;
    }

    void saveList() {
        ctx().click();
        const auto name = ctx().port.chooseFile({{}, messages::ListenFilter, messages::ListSaveTitle, true});
        if (!name || name->empty()) return;
        const PresetFile file = presetFile(ctx(), copy_);
        if (!file.obstacle.empty()) return ctx().port.tell(file.obstacle, box::Exclamation);
        if (!writeFile(ctx(), "ListeSpeichern", *name, file.text)) return;
        ctx().port.tell(messages::ListSaved1 + *name + strBVKTexte(TextSaved2));
        if (!file.withoutValue.empty()) ctx().port.tell(fmt::format(messages::SavedWithoutValues, file.withoutValue.size(), listed(file.withoutValue)), box::Information);
    }

    // In the place of an entry of the same Tip, or behind the last.
    void take(const TippListEintrag& entry) {
        const auto found = std::find_if(copy_.begin(), copy_.end(), [&](const TippListEintrag& own) { return own.TippNr == entry.TippNr; });
        if (found == copy_.end())
            copy_.push_back(entry);
        else
            *found = entry;
    }

    Export& export_;
    TipList copy_;
    TippFileSaveRequest windows_;
};

void Export::showListe() { ListWindows(*this).show(); }

void Export::loadList() {
    listen_.blnADMListe = false;
    if (ListWindows window(*this); window.loadList()) window.show();
}

}  // namespace brenvik
