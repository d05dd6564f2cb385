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

Application application(TipEngine& engine, const TipList& liste) {
    Context& ctx = engine.context();
    Application result;
    for (const TippListEintrag& entry : liste) {
        const auto tipp = engine.lookUpTip(entry.TippNr);
        if (!tipp || !suits(ctx, *tipp)) {
            result.problems.push_back(fmt::format(messages::TipNotSuitable, entry.TippNr, entry.Titel));
            continue;
        }
        Change change;
        change.tipHeading = entry.Titel;
        change.tippIndex = entry.TippNr;
        for (const ExportTip& values : exportValues({entry}).tipps)
            for (const ExportValue& value : values.values) {
                const TipListValue& source = entry.Values[value.source];
                const std::string key = NetzRegPfad(ctx, source.Hauptschluessel) + "\\" + source.Unterschluessel;
                ctx.objBVKReg.SetValuePath(ctx.strRechnername, key, source.Wertname);
                const auto before = ctx.objBVKReg.ReadRaw();
                if (before == value.wert) continue;
                change.values.push_back({ctx.strRechnername, key + "\\" + source.Wertname, source.TippIndex, before, value.wert, false});
                if (source.Wertname.find('\\') == std::string::npos) continue;
                change.values.back().path = key;
                change.values.back().name = source.Wertname;
            }
        if (change.values.empty()) continue;
        result.effect = std::max(result.effect, effectOf(*tipp));
        result.changes.push_back(std::move(change));
    }
    if (!result.problems.empty()) result.changes.clear();
    return result;
}

}  // namespace brenvik
