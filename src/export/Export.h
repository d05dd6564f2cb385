#pragma once
// The export commands of the main window: REG and ADM files of the Tip on screen, the two lists, their window. All of them
// tell the user what came of it; a file that cannot be written leaves the old one as it was.
#include <functional>

#include "export/ExportFiles.h"
#include "export/TippFileSaveRequest.h"

namespace brenvik {

class Export {
public:
    Export(TipEngine& engine, ExportLists& lists) : engine_(engine), listen_(lists) {}
    Export(const Export&) = delete;
    Export& operator=(const Export&) = delete;

    void RegFileSave(bool blnListe);                     // false: the Tip on screen
    void ADMFileSave(bool blnListe);
    // Adds the Tip on screen, or takes its texts over if it is in the list. False: a panel holds what cannot be.
    bool AddTippToList(TipList& Liste, bool blnLeiste = true);

    // The commands; each says for which list it is meant.
    void addRegListe();
    void addADMListe();
    void showRegListe();
    void showADMListe();
    void loadList();                                    // a list's file into the REG list, whose window then opens

    void RegListeAktiv(bool blnAn) { engine_.FB_RegListe(blnAn); }
    void ADMListeAktiv(bool blnAn) { engine_.FB_ADMListe(blnAn); }

private:
    friend class ListWindows;
    struct SaveOrder;
    void save(const SaveOrder& order);
    void showListe();
    void tellAdded(const char* what, const TipList& liste, const TippListEintrag& entry);
    Context& ctx() { return engine_.context(); }
    TipList& liste() { return listen_.blnADMListe ? listen_.ADMListe : listen_.RegListe; }
    void listeAktiv(bool on) { listen_.blnADMListe ? ADMListeAktiv(on) : RegListeAktiv(on); }

    TipEngine& engine_;
    ExportLists& listen_;
};

// The file that a choice names, written or refused; false: the user was told why not. proc names the report.
bool writeFile(Context& ctx, const char* proc, const std::string& name, const std::string& bytes);

}  // namespace brenvik
