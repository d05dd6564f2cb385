#pragma once
// What the options dialog works on: its own copies of the settings, which the program takes over with cmdOptOK only. All
// reach the registry at the program's end, the start password too.
#include <string>

#include "frame/Context.h"

namespace brenvik {

struct OptionenRequest : WindowRequest {
    explicit OptionenRequest(FrameContext& context) : ctx(context), values(context.einstellungen), chkPasswort(values.blnPasswortAktiv) {}
    std::string_view windowName() const override { return "frmBVK_Optionen"; }

    FrameContext& ctx;
    Settings values;                     // the copies; folders as their fields show them
    bool chkPasswort;
    std::string txtPW1, txtPW2;
    bool passwordChanged = false;     // the changed flag of the password group

    // Whether the companion help lies in the folder. If not, the user is asked for another one, which is then kept.
    bool HelpFileCheck(const std::string& file, const std::string& dir);
    // True: the file is there and is the one to use from now on; false: it stays with the old one.
    bool chooseHelpFile(const std::string& file);
    // Asks for a folder; the answer is current if none was chosen. Raises the flags that keep history and favourites going.
    std::string PfadChange(const std::string& current);
    // Hands the copies to the program; an empty folder means the standard one. False: the passwords differ or cannot be
    // kept; the dialog stays open, and what was handed over before stays.
    bool cmdOptOK();
};

}  // namespace brenvik
