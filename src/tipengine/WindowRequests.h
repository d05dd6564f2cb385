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
struct DatentypAnfrage : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Datentyp"; }
    std::string tippNummer, typDatenbank, typRegistry, inhalt;
    bool weiter = false;            // cmdWeiter; closing the window any other way is cmdAbruch
};

// The entry of a context menu. speichern is called by cmdSave while the window is open.
struct BearbeitenAnfrage : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Bearbeiten"; }
    bool neu = true;                // blnBearbeitenNeu
    std::string txtKeyName, txtBeschreibung, txtBefehl;
    std::function<void(BearbeitenAnfrage&)> befehlLesen;     // fills txtBefehl for the entry named in txtKeyName
    std::function<bool(BearbeitenAnfrage&)> speichern;       // true: saved, the window closes
    std::function<void(BearbeitenAnfrage&)> befehlSuchen;    // cmdBefehl: file choice into txtBefehl
};

// The name of a boot menu entry, before it is overwritten or a new one is made.
struct BootINIAnfrage : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_BootINI"; }
    enum class Antwort { Abbruch, Ueberschreiben, Name };
    std::string txtBootWert;
    std::vector<std::string> vorhandeneTitel;
    Antwort antwort = Antwort::Abbruch;

    // A new entry under this name. False: it stands in the menu already, the entry's own too, which can only be overwritten.
    bool nennen(const std::string& name) {
        if (std::find(vorhandeneTitel.begin(), vorhandeneTitel.end(), name) != vorhandeneTitel.end()) return false;
        txtBootWert = name;
        antwort = Antwort::Name;
        return true;
    }
};

}  // namespace brenvik
