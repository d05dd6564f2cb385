// Taking the values of Tips along for exports and lists, and writing the values of several Tips as one change.
#include <algorithm>
#include <fmt/format.h>

#include "frame/Reports.h"
#include "registry/ValueOperations.h"
#include "tipengine/TippMaschine.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

// Puts the state that belongs to the Tip on screen back, whatever happens meanwhile.
class Bildschirmtipp {
public:
    explicit Bildschirmtipp(Context& ctx)
        : ctx_(ctx), tipp_(ctx.aktuellerTipp), files_(ctx.strDateiListe), records_(std::move(ctx.objRS)), loaded_(ctx.blnTippGeladen),
          search_(ctx.blnDateiSuchen) {}
    ~Bildschirmtipp() {
        ctx_.aktuellerTipp = std::move(tipp_);
        ctx_.strDateiListe = std::move(files_);
        ctx_.objRS = std::move(records_);
        ctx_.blnTippGeladen = loaded_;
        ctx_.blnDateiSuchen = search_;
    }
    Bildschirmtipp(const Bildschirmtipp&) = delete;
    Bildschirmtipp& operator=(const Bildschirmtipp&) = delete;

private:
    Context& ctx_;
    Tipp tipp_;
    std::vector<std::string> files_;
    std::unique_ptr<RecordSet> records_;
    bool loaded_, search_;
};

struct TakeBack {};

}  // namespace

// Collecting for an export is no change: whether there is something to save stays as it was. A boot menu is not collected,
// since that opens its window.
bool TippMaschine::collectForExport() {
    const auto& panels = fenster().panels;
    if (std::any_of(panels.begin(), panels.end(), [](const Panel& panel) { return kindOf(panel).section; })) return true;
    const bool changed = ctx_.blnGeaendert;
    const bool ok = DatenRead();
    ctx_.blnGeaendert = changed;
    return ok;
}

GesammelterWert TippMaschine::collectedValue(std::int16_t i) const {
    const Arbeitswert& w = wert(i);
    GesammelterWert value;
    value.text = w.strAnzeigeWert;
    value.gefunden = w.roh.has_value();
    value.beruehrt = w.beruehrt;
    if (!w.beruehrt && w.roh) {
        value.wert = w.roh;
    } else if (w.strAnzeigeWert == DelKey) {
        value.geloescht = true;
    } else if (!w.strAnzeigeWert.empty()) {
        try {
            value.wert = valueToWrite(i);
        } catch (const NumberedError& error) {
            value.unpassend = error.what();
        }
    }
    return value;
}

std::vector<GesammelterWert> TippMaschine::collectedValues() {
    std::vector<GesammelterWert> values(1);
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) {
        values.push_back(collectedValue(speakerOf(i)));
        values.back().text = wert(i).strAnzeigeWert;
        // Values that nobody touched keep the form they were read in; what their panel shows is told by the panel.
        const Panel* panel = tip_.panelOfEntry(i);
        if (panel == nullptr || wert(i).beruehrt || panel->zahlUngueltig) continue;
        if (auto text = kindOf(*panel).valueText(tip_, *panel, i)) values.back().text = std::move(*text);
    }
    return values;
}

std::optional<Tipp> TippMaschine::lookUpTipp(std::int32_t number) {
    const auto& list = ctx_.udtTippListe;
    if (std::none_of(list.begin(), list.end(), [&](const TippListenEintrag& entry) { return entry.Index == number; })) return std::nullopt;
    const Bildschirmtipp keeper(ctx_);
    if (!readTippNumber(number)) return std::nullopt;
    takeSystemsKeys();
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) tip_.replaceSid(i);
    return ctx_.aktuellerTipp;
}

std::string TippMaschine::writeTogether(std::vector<Aenderung>& changes) {
    BVKRegistry& reg = ctx_.objBVKReg;
    const auto writeAll = [&] {
        for (Aenderung& change : changes)
            for (WertAenderung& value : change.werte) {
                selectValue(reg, value);
                if (value.neu)
                    reg.WriteRaw(*value.neu);
                else
                    reg.DeleteValue();
            }
    };
    const auto mark = [&](bool written) {
        for (Aenderung& change : changes)
            for (WertAenderung& value : change.werte) value.geschrieben = written;
    };
    std::size_t begun = 0;
    std::string reason;
    try {
        reg.SetPath(ctx_.strRechnername, "HKEY_LOCAL_MACHINE\\");
        RegStore& store = reg.selectedStore();
        try {   // what the store refuses shows before anything is recorded
            store.transaction([&] {
                writeAll();
                throw TakeBack{};
            });
        } catch (const TakeBack&) {
        }
        for (; begun < changes.size(); ++begun) recorder_.begin(changes[begun]);
        store.transaction(writeAll);
        mark(true);
        for (const Aenderung& change : changes)
            for (std::size_t k = 0; k < change.werte.size(); ++k) recorder_.written(change, k);
    } catch (const std::exception& error) {
        mark(false);
        reason = fmt::format("{} (Fehler {})", error.what(), errorNumberOf(error));
    }
    for (std::size_t k = 0; k < begun; ++k) recorder_.finished(changes[k]);
    return reason;
}

}  // namespace brenvik
