#pragma once
#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "tipdb/TipdbContext.h"
#include "tipengine/MainWindow.h"

namespace brenvik {

// Working values of one entry of the Tip on screen.
struct WorkingValue {
    std::string strAktuellerWert;           // as read, in display form
    std::string strAnzeigeWert;             // as the panel holds it
    bool blnWertGelesen = false;
    bool gefunden = false;                  // the value is there, whether or not the Tip can show it
    bool ignored = false;                 // it is there, but not shown: outside the Tip's values or of another type
    bool readOnly = false;                  // it may be read only
    const char* lock = nullptr;           // why its field may only show it, in German: not all of it would come back
    bool touched = false;                  // set by the user or by whatever sets a value on purpose; only then it is converted and written
    std::optional<RawValue> roh;            // what stood in the registry when it was read
    std::uint8_t DatentypModus = 1;         // 1: ask about another data type
    bool typeHandled = false;              // the conflict of types was put to the user once
    std::array<double, 6> dblOptionsWerte{};
};

struct BootEntry {
    std::string Name, Titel, Schalter;
    bool blnDisk = false;
    std::string rawTitle;                   // the title as it stands in the file, without enclosing quotes
    std::string originalLine;              // as it stands in the file; goes back like that while nobody edits it
    bool inQuotes = true;               // the title stood in quotes
};

// What the user made of a boot entry. The table stays as it was read: a save that is refused leaves nothing behind.
struct BootInput {
    std::size_t place = 0;                  // in udtBootEintraege; its size: a new entry
    BootEntry eintrag;
};

// The program's whole state, owned by main.
struct Context : TipdbContext {
    using TipdbContext::TipdbContext;

    MainWindow frmBVK_Prog;
    std::vector<WorkingValue> values;         // [0] unused, parallel to aktuellerTipp.Eintrag
    std::vector<std::string> strDateiName;

    bool blnGeaendert = false;
    bool blnSchreibrecht = false;
    bool blnEinWertGelesen = false;
    bool blnAusgabeLaeuft = false;
    bool blnInitPanel = false;
    bool blnTabInit = false;
    bool blnTippAnzeige = false;
    bool blnDateiSuchen = true;
    bool blnListeGeaendert = false;
    std::string strGewaehlteDatei;
    std::int16_t intTreeAktiv = 1;
    std::int16_t intPanelCheckBox = -1, intPanelText = -1, intPanelZahl = -1, intPanelAuswahl = -1, intPanelOption = -1,
                 intPanelBit = -1;
    std::vector<BootEntry> udtBootEintraege;   // [0] unused
    int intBootEintrag = 0;
    std::optional<BootInput> bootInput;      // collected for the save under way
};

}  // namespace brenvik
