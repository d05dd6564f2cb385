#include "frame/program/CommandLineText.h"

namespace brenvik {
namespace {

constexpr std::string_view SwitchPC = "/PC:", SwitchUser = "/U:", SwitchPassword = "/PW:", SwitchDebug = "/DEBUG", SwitchHelp = "/?";

// The switches are plain ASCII; other letters must keep their length, so that places stay places.
std::string asciiUpper(std::string text) {
    for (char& c : text)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return text;
}

}  // namespace

void hidePassword(int argc, char** argv) {
    for (int i = 1; i < argc; ++i) {
        const std::size_t place = asciiUpper(argv[i]).find(SwitchPassword);
        if (place == std::string::npos) continue;
        for (char* letter = argv[i] + place + SwitchPassword.size(); *letter != '\0'; ++letter) *letter = '*';
    }
}

std::string CommandLineText::Param(std::string_view name) {
    ProcTrace trace(ctx_.trace, "Param");
    trace.p(name);
    std::string value;
    if (const std::size_t place = asciiUpper(line_).find(name); place != std::string::npos) {
        const std::size_t start = place + name.size();
        const std::size_t end = std::min(line_.find(' ', start), line_.size());
        value = line_.substr(start, end - start);
        line_.erase(0, end);
    }
    trace.r(name == SwitchPassword && !value.empty() ? std::string("*****") : value);
    return value;
}

void CommandLineText::ParameterOK() {
    ProcTrace trace(ctx_.trace, "ParameterOK");
    if (line_.find(SwitchHelp) != std::string::npos) {
        trace.noEnd();
        ParameterRequest help;
        ctx_.port.showWindow(help);
        return;
    }
    ctx_.strParamPC = Param(SwitchPC);
    ctx_.strParamUser = Param(SwitchUser);
    ctx_.strParamPasswort = Param(SwitchPassword);
    const bool debug = asciiUpper(line_).find(SwitchDebug) != std::string::npos;
    trace.note(debug ? "Debugmodus: Eingeschaltet" : "Debugmodus: Ausgeschaltet");
    ctx_.trace.setDebug(debug);
}

}  // namespace brenvik
