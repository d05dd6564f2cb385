#pragma once
// The modal windows that the engine opens: what each shows, and what it brings back.
#include <algorithm>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/UserPort.h"

namespace brenvik {

// Another data type in the registry than in the tip database.
struct DatentypRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Datentyp"; }
    std::string tipNumber, typeDatabase, typeRegistry, contents;
    bool weiter = false;            // cmdWeiter; closing the window any other way is cmdAbruch
};

// The entry of a context menu. speichern is called by cmdSave while the window is open.
struct BearbeitenRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Bearbeiten"; }
    bool neu = true;                // blnBearbeitenNeu
    std::string txtKeyName, txtBeschreibung, txtBefehl;
    std::function<void(BearbeitenRequest&)> commandRead;     // fills txtBefehl for the entry named in txtKeyName
    std::function<bool(BearbeitenRequest&)> save;       // true: saved, the window closes
    std::function<void(BearbeitenRequest&)> commandFind;    // cmdBefehl: file choice into txtBefehl
};

// The name of a boot menu entry, before it is overwritten or a new one is made.
struct BootINIRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_BootINI"; }
    enum class Reply { Abort, Overwrite, Name };
    std::string txtBootWert;
    std::vector<std::string> presentTitles;
    Reply reply = Reply::Abort;

    // A new entry under this name. False: it stands in the menu already, the entry's own too, which can only be overwritten.
    bool naming(const std::string& name) {
        if (std::find(presentTitles.begin(), presentTitles.end(), name) != presentTitles.end()) return false;
        txtBootWert = name;
        reply = Reply::Name;
        return true;
    }
};

}  // namespace brenvik
