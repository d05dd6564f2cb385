#include "cli/CliPort.h"

#include <algorithm>
#include <ctime>
#include <iostream>

#include "cli/registry/RegistryOutput.h"
#include "frame/program/Detection.h"
#include "frame/text/Texts.h"

namespace brenvik {

Answer CliPort::messageBox(const MessageBox& request) {
    std::string text = request.text;
    std::erase(text, '\r');
    std::cerr << text;
    const int buttons = request.flags & 0xF;
    if (buttons == box::YesNo || buttons == box::YesNoCancel) {
        sayAnswer();
        return yes_ ? Answer::Yes : Answer::No;
    }
    std::cerr << "\n";
    if (buttons == box::RetryCancel || buttons == box::OKCancel) return Answer::Cancel;
    return Answer::OK;
}

void CliPort::sayAnswer() const { std::cerr << (yes_ ? " [Ja]" : " [Nein; mit --yes wird Ja geantwortet]") << "\n"; }

void CliPort::answer(DatentypRequest& question) {
    std::cerr << "Anderer Datentyp in der Registry: Datenbank " << question.typeDatabase << ", Registry " << question.typeRegistry << ", Inhalt \""
              << question.contents << "\". Soll der Wert gelöscht werden, damit der Tipp ihn neu anlegen kann ?";
    sayAnswer();
    question.weiter = yes_;
}

void CliPort::answer(BootINIRequest& question) {
    if (!bootName_.empty()) {
        if (!question.naming(bootName_)) std::cerr << strBVKTexte(184) << "\n";
        return;
    }
    std::cerr << "Der Eintrag \"" << question.txtBootWert << "\" des Bootmenüs wird überschrieben.";
    sayAnswer();
    if (yes_) question.reply = BootINIRequest::Reply::Overwrite;
}

void CliPort::answer(UndoConflictsRequest& question) {
    std::cerr << "Seit der Änderung noch einmal geändert:\n";
    for (auto& row : question.rows) {
        std::cerr << cli::oneLine(row.place) << "\n   vorher: " << row.before << "\n   nach der Änderung: " << row.after << "\n   jetzt: " << row.now << "  (" << row.by << ")\n";
        row.restore = yes_ && !keep_;
    }
    question.proceed = yes_ || keep_;
    std::cerr << (keep_ ? "Das bleibt so." : yes_ ? "Das wird überschrieben." : "Es wurde nichts zurückgesetzt; --keep lässt das so und setzt das Übrige zurück, --yes überschreibt es.") << "\n";
}

void CliPort::showWindow(WindowRequest& request) {
    if (auto* conflicts = dynamic_cast<UndoConflictsRequest*>(&request)) return answer(*conflicts);
    if (auto* types = dynamic_cast<DatentypRequest*>(&request)) return answer(*types);
    if (auto* boot = dynamic_cast<BootINIRequest*>(&request)) return answer(*boot);
    if (const auto* system = dynamic_cast<const OSErkennungRequest*>(&request)) {
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
