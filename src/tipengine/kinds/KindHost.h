#pragma once
// What a kind needs of the engine around it.
#include "tipengine/tip/CurrentTip.h"
#include "tipengine/tip/TipFiles.h"

namespace brenvik {

class KindHost {
public:
    KindHost(CurrentTip& currentTip, TipFiles& tipFiles) : tip(currentTip), files(tipFiles) {}
    KindHost(const KindHost&) = delete;
    KindHost& operator=(const KindHost&) = delete;
    virtual ~KindHost() = default;

    virtual void readEntry(std::int16_t i, StatusLine& status) = 0;   // into the working values, from the registry or the file
    virtual void readSilently(Panel& panel) = 0;                       // all entries of the panel; one status line speaks for them
    virtual void touched(Panel& panel, std::int16_t entry) = 0;        // the user set the entry
    virtual void redraw(Panel& panel) = 0;
    [[nodiscard]] virtual bool settle() = 0;                           // input is saved or dropped; false: it stays, and so must the panel
    virtual void captionsForEntries() = 0;                             // the commands are for the entries of a context menu

    CurrentTip& tip;
    TipFiles& files;
};

}  // namespace brenvik
