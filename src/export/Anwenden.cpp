#include <fmt/format.h>

#include "export/Exportwerte.h"
#include "export/Meldungen.h"
#include "export/Preset.h"
#include "frame/Konvertierung.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

bool suits(const Context& ctx, const Tipp& tipp) {
    const bool remote = !ctx.strRechnername.empty() && ctx.strRechnername != ctx.strLokalerRechner;
    if (remote || !ctx.einstellungen.BSSystemAktiv) return true;
    switch (ctx.intBS) {
        case 1: return tipp.Win95;
        case 2: return tipp.Win98;
        case 3: return tipp.WinNT;
        case 4: return tipp.Win2000;
        case 5: return tipp.WinME;
        case 6: return tipp.WinXP;
        default: return false;
    }
}

}  // namespace

Anwendung anwendung(TippMaschine& maschine, const TippListe& liste) {
    Context& ctx = maschine.context();
    Anwendung result;
    for (const TippListEintrag& entry : liste) {
        const auto tipp = maschine.lookUpTipp(entry.TippNr);
        if (!tipp || !suits(ctx, *tipp)) {
            result.probleme.push_back(fmt::format(meldung::TippNichtGeeignet, entry.TippNr, entry.Titel));
            continue;
        }
        Aenderung change;
        change.tippÜberschrift = entry.Titel;
        change.tippIndex = entry.TippNr;
        for (const Exporttipp& values : exportwerte({entry}).tipps)
            for (const Exportwert& value : values.werte) {
                const TippListWert& source = entry.Werte[value.quelle];
                const std::string path = NetzRegPfad(ctx, source.Hauptschluessel) + "\\" + source.Unterschluessel + "\\" + source.Wertname;
                ctx.objBVKReg.SetPath(ctx.strRechnername, path);
                const auto before = ctx.objBVKReg.ReadRaw();
                if (before != value.wert) change.werte.push_back({ctx.strRechnername, path, source.TippIndex, before, value.wert, false});
            }
        if (change.werte.empty()) continue;
        result.neustart = result.neustart || tipp->Neustart == 1;
        result.changes.push_back(std::move(change));
    }
    if (!result.probleme.empty()) result.changes.clear();
    return result;
}

}  // namespace brenvik
