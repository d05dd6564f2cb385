#include "tipengine/tip/TipCollector.h"

#include <algorithm>
#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

// Puts the state that belongs to the Tip on screen back, whatever happens meanwhile.
class ScreenTip {
public:
    explicit ScreenTip(Context& ctx)
        : ctx_(ctx), tipp_(ctx.aktuellerTipp), files_(ctx.strDateiListe), records_(std::move(ctx.objRS)), loaded_(ctx.blnTippGeladen),
          search_(ctx.blnDateiSuchen) {}
    ~ScreenTip() {
        ctx_.aktuellerTipp = std::move(tipp_);
        ctx_.strDateiListe = std::move(files_);
        ctx_.objRS = std::move(records_);
        ctx_.blnTippGeladen = loaded_;
        ctx_.blnDateiSuchen = search_;
    }
    ScreenTip(const ScreenTip&) = delete;
    ScreenTip& operator=(const ScreenTip&) = delete;

private:
    Context& ctx_;
    Tipp tipp_;
    std::vector<std::string> files_;
    std::unique_ptr<RecordSet> records_;
    bool loaded_, search_;
};

struct TakeBack {};

}  // namespace

bool TipCollector::DatenRead() {
    bool ok = false;
    ctx_.bootInput.reset();
    reportAndGoOn(ctx_, "DatenRead", [&] {
        std::optional<BootInput> bootInput;
        for (Panel& panel : windows().panels) {
            if (!kindOf(panel).mayCollect(screen_, panel, bootInput)) return;
            if (panel.entries.empty()) continue;
            writer_.collectPanel(panel);
        }
        for (std::int16_t i = 1; i <= lastEntry(); ++i)
            if (upperCase(wert(i).strAktuellerWert) != upperCase(wert(i).strAnzeigeWert)) ctx_.blnGeaendert = true;
        ctx_.bootInput = std::move(bootInput);
        ok = true;
    });
    return ok;
}

// Collecting for an export is no change: whether there is something to save stays as it was. A boot menu is not collected,
// since that opens its window.
bool TipCollector::collectForExport() {
    const auto& panels = windows().panels;
    if (std::any_of(panels.begin(), panels.end(), [](const Panel& panel) { return kindOf(panel).section; })) return true;
    const bool changed = ctx_.blnGeaendert;
    const bool ok = DatenRead();
    ctx_.blnGeaendert = changed;
    return ok;
}

std::optional<Tipp> TipCollector::lookUpTip(std::int32_t number) {
    const auto& list = ctx_.udtTippListe;
    if (std::none_of(list.begin(), list.end(), [&](const TipListEntry& entry) { return entry.Index == number; })) return std::nullopt;
    const ScreenTip keeper(ctx_);
    if (!tree_.readTipNumber(number)) return std::nullopt;
    tip_.takeSystemsKeys();
    for (std::int16_t i = 1; i <= lastEntry(); ++i) tip_.replaceSid(i);
    return ctx_.aktuellerTipp;
}

std::string TipCollector::writeTogether(std::vector<Change>& changes) {
    BVKRegistry& reg = ctx_.objBVKReg;
    const auto writeAll = [&] {
        for (Change& change : changes)
            for (ValueChange& value : change.values) {
                selectValue(reg, value);
                if (value.neu)
                    reg.WriteRaw(*value.neu);
                else
                    reg.DeleteValue();
            }
    };
    const auto mark = [&](bool written) {
        for (Change& change : changes)
            for (ValueChange& value : change.values) value.written = written;
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
        for (const Change& change : changes)
            for (std::size_t k = 0; k < change.values.size(); ++k) recorder_.written(change, k);
    } catch (const std::exception& error) {
        mark(false);
        reason = fmt::format("{} (Fehler {})", error.what(), errorNumberOf(error));
    }
    for (std::size_t k = 0; k < begun; ++k) recorder_.finished(changes[k]);
    return reason;
}

}  // namespace brenvik
