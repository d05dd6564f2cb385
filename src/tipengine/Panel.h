#pragma once
// One record for a panel, whoever shows it: the window draws it, the command line prints it, the tests read it.
// The engine fills it; user events go to the engine's methods, which change the record and raise blnGeaendert.
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "frame/UserPort.h"

namespace brenvik {

enum class StatusColour { Normal, Gefunden, Missing };   // button text, 0x800001, 255 (red lowest)

struct StatusLine {
    std::string text;
    StatusColour colour = StatusColour::Normal;
};

// The eleven kinds, the values of Ausgabeart.
namespace art {
inline constexpr std::int16_t CheckBox = 1, TextWerte = 2, ZahlenWerte = 3, AuswahlBox = 4, OptionsAuswahl = 5, Drive = 6, Farbe = 7,
                              Liste = 8, BootINI = 9, Kontext = 10, BitMaske = 11;
}

struct ListLine {            // row of lvListe (kinds 8 and 10)
    std::string text;
    std::string subText;      // first sub-item
    bool ticked = false;
    bool readOnly = false;      // the value behind the row may not be written
};

struct SwitchField {           // one chkBootINI with its txtBootINI (kind 9), one chkBitMaske (kind 11)
    std::string beschriftung;
    bool ticked = false;
    bool withValue = false;       // has a text field beside the box
    std::string wert;
};

struct Panel {
    std::int16_t Ausgabeart = 0;
    std::int16_t index = 0;                 // element of the control array: fraCheckBox(index); 0 for kinds with one panel
    std::vector<std::int16_t> entries;    // the Tip's entries it serves, one for kinds with a panel per entry
    std::string label;                      // lblCheckBox and its like
    StatusLine status;                     // the status label beside the caption
    bool readOnly = false;                  // what it shows now may not be changed by its controls
    std::string hint;                    // a line below them: why not, or what a save does with what stands there
    bool unfinished = false;                  // could not be built: shows what was known by then, and nothing is collected from it

    // kind 1
    std::string chkBeschriftung;
    bool ticked = false;
    // kinds 2 and 6: the text field. Several lines for REG_MULTI_SZ, separated by LF.
    std::string text;
    bool multiLine = false;
    // kind 3, in panel units (after the divisor)
    std::int32_t Min = 0, Max = 0, Value = 0, TickFrequency = 1;
    std::string numberText;                   // what txtZahlenWerte shows
    bool numberInvalid = false;             // the field holds no number in range; Value is the last good one
    // kind 4 (cboAuswahlBox), 5 (options), 6 (cboDrive), 7 (cboFarbe), 9 (cboBootINI)
    std::vector<std::string> selection;
    int chosen = -1;
    std::vector<double> dblOptionsWert;     // kind 5, one per option
    // kind 6
    bool cmdDriveSichtbar = false;
    std::string fileFilter;                // empty: cmdDrive chooses a folder
    // kind 7
    std::optional<Rgb> colour;               // colour of cmdFarbSET; none until a value was read
    // kinds 8 and 10
    std::vector<ListLine> lines;
    int chosenRow = -1;
    // kinds 9 and 11
    std::vector<SwitchField> schalter;
    std::string txtBINI;                    // kind 9
    bool txtBINIAktiv = true;
};

}  // namespace brenvik
