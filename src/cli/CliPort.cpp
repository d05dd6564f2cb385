#include "cli/CliPort.h"

#include <algorithm>
#include <ctime>
#include <iostream>

#include "frame/Erkennung.h"
#include "frame/Texte.h"
#include "tipengine/Fensteranfragen.h"

namespace brenvik {

Answer CliPort::messageBox(const MessageBox& request) {
    std::string text = request.text;
    std::erase(text, '\r');
    std::cerr << text;
    const int buttons = request.flags & 0xF;
    if (buttons == box::YesNo || buttons == box::YesNoCancel) {
        std::cerr << (yes_ ? " [Ja]" : " [Nein; mit --yes wird Ja geantwortet]") << "\n";
        return yes_ ? Answer::Yes : Answer::No;
    }
    std::cerr << "\n";
    if (buttons == box::RetryCancel || buttons == box::OKCancel) return Answer::Cancel;
    return Answer::OK;
}

void CliPort::showWindow(WindowRequest& request) {
    if (const auto* types = dynamic_cast<const DatentypAnfrage*>(&request)) {
        std::cerr << "Anderer Datentyp in der Registry: Datenbank " << types->typDatenbank << ", Registry " << types->typRegistry << ", Inhalt \""
                  << types->inhalt << "\". Der Wert wird nicht angepasst.\n";
        return;
    }
    if (auto* boot = dynamic_cast<BootINIAnfrage*>(&request)) {
        std::cerr << "Der Eintrag \"" << boot->txtBootWert << "\" des Bootmenüs wird überschrieben."
                  << (yes_ ? " [Ja]" : " [Nein; mit --yes wird Ja geantwortet]") << "\n";
        if (yes_) boot->antwort = BootINIAnfrage::Antwort::Ueberschreiben;
        return;
    }
    if (const auto* system = dynamic_cast<const OSErkennungAnfrage*>(&request)) {
        std::cerr << strBVKTexte(22) << ": Platform-ID " << system->version.dwPlatformId << ", Version " << system->version.dwMajorVersion << "."
                  << system->version.dwMinorVersion << "." << system->version.dwBuildNumber << "\n";
        return;
    }
    std::cerr << "Dafür wird das Fenster gebraucht: " << request.windowName() << "\n";
}

DateTime CliPort::now() {
    const std::time_t seconds = std::time(nullptr);
    const std::tm t = *std::localtime(&seconds);
    return {t.tm_year + 1900, t.tm_mon + 1, t.tm_mday, t.tm_hour, t.tm_min, t.tm_sec};
}

}  // namespace brenvik
