// Another tip database in place of the one that is open.
#include "frame/DateiSystem.h"
#include "tipdb/LoadDB.h"
#include "tipdb/Schema.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {

void TippMaschine::showOtherDatabase(const std::filesystem::path& file) {
    if (!andereDatenbankLaden(ctx_, file)) return;
    TippsEntladen();
    ctx_.aktuellerTipp = {};
    ctx_.werte.clear();
    ctx_.blnTippGeladen = false;
    TreeEinlesen();
    TreeViewAbfrage(false);
}

void TippMaschine::mnuandereDBLoad() {
    if (!DatenSichern()) return;
    if (const auto choice = ctx_.port.chooseFile({{}, meldung::DatenbankFilter, meldung::DatenbankTitel, false})) showOtherDatabase(userPath(ctx_, *choice));
}

void TippMaschine::mnuBVKDBLoad() {
    if (DatenSichern()) showOtherDatabase(ctx_.programmPfad / DatenbankName);
}

}  // namespace brenvik
