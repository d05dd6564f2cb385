#pragma once
// The export commands of the main window: REG and ADM files of the Tip on screen, the two lists, their window. All of them
// tell the user what came of it; a file that cannot be written leaves the old one as it was.
#include <functional>

#include "export/ExportFiles.h"
#include "export/TippFileSaveRequest.h"

namespace brenvik {

class Export {
public:
    Export(TippMaschine& engine, Exportlisten& lists) : maschine_(engine), listen_(lists) {}
    Export(const Export&) = delete;
    Export& operator=(const Export&) = delete;

    void RegFileSave(bool blnListe);                     // false: the Tip on screen
    void ADMFileSave(bool blnListe);
    // Adds the Tip on screen, or takes its texts over if it is in the list. False: a panel holds what cannot be.
    bool AddTippToList(TippListe& Liste, bool blnLeiste = true);

    // The commands; each says for which list it is meant.
    void addRegListe();
    void addADMListe();
    void showRegListe();
    void showADMListe();
    void loadListe();                                    // a list's file into the REG list, whose window then opens

    void RegListeAktiv(bool blnAn) { maschine_.FB_RegListe(blnAn); }
    void ADMListeAktiv(bool blnAn) { maschine_.FB_ADMListe(blnAn); }

private:
    friend class Listenfenster;
    struct Speicherauftrag;
    void save(const Speicherauftrag& order);
    void showListe();
    void tellAdded(const char* what, const TippListe& liste, const TippListEintrag& entry);
    Context& ctx() { return maschine_.context(); }
    TippListe& liste() { return listen_.blnADMListe ? listen_.ADMListe : listen_.RegListe; }
    void listeAktiv(bool on) { listen_.blnADMListe ? ADMListeAktiv(on) : RegListeAktiv(on); }

    TippMaschine& maschine_;
    Exportlisten& listen_;
};

// The file that a choice names, written or refused; false: the user was told why not. proc names the report.
bool schreibeDatei(Context& ctx, const char* proc, const std::string& name, const std::string& bytes);

}  // namespace brenvik
