#pragma once
// The program's own switches: /PC:<Rechnername> /U:<Account> /PW:<Passwort> /DEBUG /?. A value ends at the first blank, no
// quoting is known. A switch that was found is cut out together with all that stands in front of it, so that the switches
// take effect in this order only.
#include <string>
#include <string_view>

#include "frame/Context.h"

namespace brenvik {

// frmBVK_Parameter: the help about the switches; nothing goes in, nothing comes back.
struct ParameterRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Parameter"; }
};

// Overwrites what stands behind /PW: in the process's own arguments, where many a host shows it to every user. Called once
// they have been copied; until then it was to be seen, which only handing the password over another way avoids.
void hidePassword(int argc, char** argv);

class CommandLineText {
public:
    CommandLineText(FrameContext& ctx, std::string line) : ctx_(ctx), line_(std::move(line)) {}

    bool empty() const { return line_.empty(); }
    const std::string& rest() const { return line_; }   // what no switch has taken yet

    // Cuts out the switch (in capitals, with its colon) and answers its value as typed; empty if it isn't there.
    std::string Param(std::string_view name);
    // Sets strParamPC, strParamUser, strParamPasswort and the debug flag, or shows the help window and does nothing else.
    void ParameterOK();

private:
    FrameContext& ctx_;
    std::string line_;
};

}  // namespace brenvik
