#include <algorithm>
#include <fmt/format.h>

#include "export/ExportValues.h"
#include "export/Messages.h"
#include "export/Preset.h"
#include "frame/text/Conversions.h"
#include "registry/ValueOperations.h"

namespace brenvik {
namespace {

bool suits(const Context& ctx, const Tipp& tipp) {
    const bool remote = !ctx.strRechnername.empty() && ctx.strRechnername != ctx.strLokalerRechner;
    if (remote || !ctx.einstellungen.BSSystemAktiv) return true;
    return isMeantFor(tipp, ctx.intBS);
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
                const std::string key = NetzRegPfad(ctx, source.Hauptschluessel) + "\\" + source.Unterschluessel;
                ctx.objBVKReg.SetValuePath(ctx.strRechnername, key, source.Wertname);
                const auto before = ctx.objBVKReg.ReadRaw();
                if (before == value.wert) continue;
                change.werte.push_back({ctx.strRechnername, key + "\\" + source.Wertname, source.TippIndex, before, value.wert, false});
                if (source.Wertname.find('\\') == std::string::npos) continue;
                change.werte.back().path = key;
                change.werte.back().name = source.Wertname;
            }
        if (change.werte.empty()) continue;
        result.wirkung = std::max(result.wirkung, effectOf(*tipp));
        result.changes.push_back(std::move(change));
    }
    if (!result.probleme.empty()) result.changes.clear();
    return result;
}

}  // namespace brenvik
