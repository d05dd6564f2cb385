// Another tip database in place of the one that is open.
#include "frame/DateiSystem.h"
#include "tipdb/LoadDB.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {

void TippMaschine::showOtherDatabase(const std::filesystem::path& file) {
    if (LoadDB(ctx_, file) != LoadErgebnis::Geladen) return;
    TippsEntladen();
    ctx_.aktuellerTipp = {};
    ctx_.werte.clear();
    ctx_.blnTippGeladen = false;
    TreeEinlesen();
    TreeViewAbfrage(false);
}

void TippMaschine::mnuandereDBLoad() {
    const bool changed = ctx_.blnGeaendert;
    DatenSichern();
    if (const auto choice = ctx_.port.chooseFile({{}, meldung::DatenbankFilter, meldung::DatenbankTitel, false}))
        showOtherDatabase(userPath(ctx_, *choice));
    else if (changed)
        reloadTipp();   // changes that were dropped must not stay in the panels
}

void TippMaschine::mnuBVKDBLoad() {
    DatenSichern();
    showOtherDatabase(ctx_.programmPfad / "RegDaten.mdb");
}

}  // namespace brenvik
