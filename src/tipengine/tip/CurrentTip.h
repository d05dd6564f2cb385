#pragma once
// The Tip on screen, as all parts of the engine see it: its entries, their working values, and where each value lies.
#include <cstdint>
#include <optional>
#include <string>

#include "tipengine/Context.h"
#include "tipengine/values/Change.h"

namespace brenvik {

class CurrentTip {
public:
    explicit CurrentTip(Context& context) : ctx_(context) {}
    CurrentTip(const CurrentTip&) = delete;
    CurrentTip& operator=(const CurrentTip&) = delete;

    Context& context() const { return ctx_; }
    MainWindow& window() const { return ctx_.frmBVK_Prog; }
    const Tipp& record() const { return ctx_.aktuellerTipp; }
    TipEntry& entry(std::int16_t i) const { return ctx_.aktuellerTipp.Eintrag.at(static_cast<std::size_t>(i)); }
    WorkingValue& value(std::int16_t i) const { return ctx_.values.at(static_cast<std::size_t>(i)); }
    std::int16_t last() const { return static_cast<std::int16_t>(ctx_.aktuellerTipp.lastEntry()); }

    Panel* panelOfEntry(std::int16_t entry) const;
    std::size_t placeOf(const Panel& panel) const { return static_cast<std::size_t>(&panel - window().panels.data()); }

    std::string keyPath(std::int16_t i) const;           // NetzRegPfad(root) "\" key, no backslash at the end
    std::string valuePath(std::int16_t i) const;         // keyPath "\" value name, for the eye: a name may hold a backslash
    BVKRegistry& valueOf(std::int16_t i) const;          // the service with the entry's value selected
    void replaceSid(std::int16_t i) const;
    void takeSystemsKeys() const;                        // before the first panel is built, since one may be for several entries
    bool mayWrite(std::int16_t i) const;                 // its key or, where it is missing, the nearest one above it
    StatusLine statusOf(std::int16_t entry) const;      // of its panel

    Change newChange(Change::Art art) const;
    ValueChange changeOfValue(std::int16_t i, std::optional<RawValue> alt, std::optional<RawValue> neu) const;

    bool lookOnly = false;                               // built for a look: nothing is asked, nothing changed

private:
    Context& ctx_;
};

}  // namespace brenvik
