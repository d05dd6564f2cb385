// Tips whose values lie in an INI file: finding the file, reading, writing.
#include <fmt/format.h>

#include <map>

#include "frame/DateiSystem.h"
#include "frame/Konvertierung.h"
#include "frame/Profildatei.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "registry/Hibernation.h"
#include "registry/ValueOperations.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {

constexpr std::uintmax_t IniGrenze = 16u << 20;
constexpr std::size_t IniLaenge = 255;   // characters that are read of a value

// The user's text is made of the one that was shown, and is not chosen from a list.
bool isTyped(const TippEintrag& e) { return e.Ausgabeart == art::TextWerte || e.Ausgabeart == art::Drive; }

// In German why an INI file cannot hold the text so that it is read again; empty: it can.
std::string refusalOf(const std::string& text) {
    if (text.find_first_of(std::string("\r\n\0", 3)) != std::string::npos) return fmt::format(meldung::WertUnpassend, text, "INI-Eintrag");
    if (textLength(text) > IniLaenge) return fmt::format(meldung::IniZuLang, textLength(text), IniLaenge);
    return {};
}

// Puts the value of an entry into the file's content. Answers an empty text, or in German why it cannot stand there.
std::string putValue(Profildatei& content, const TippEintrag& e, const Arbeitswert& w, bool loeschen) {
    try {
        const auto present = content.value(e.Schlüssel, e.Wertname, 0);
        if (!loeschen && !w.beruehrt && present) return {};   // made by somebody else since it was read
        if (loeschen || w.strAnzeigeWert == DelKey) {
            content.removeKey(e.Schlüssel, e.Wertname);
            return {};
        }
        if (const std::string refusal = refusalOf(w.strAnzeigeWert); !refusal.empty()) return refusal;
        if (isTyped(e) && present && *present != Left(*present, IniLaenge) && w.strAnzeigeWert != e.Standardwert)
            return fmt::format(meldung::IniNurZumTeilGezeigt, e.Wertname);
        content.setValue(e.Schlüssel, e.Wertname, w.strAnzeigeWert);
        return {};
    } catch (const NumberedError& error) {
        return error.what() + std::string(meldung::NichtsGeaendert);
    }
}

}  // namespace

Profildatei TippMaschine::loadProfildatei(const std::filesystem::path& file) { return Profildatei(readFile(file, IniGrenze)); }

// The file of an entry: a Windows path, or what the user chose in its place.
std::string TippMaschine::iniPath(std::int16_t i) const {
    if (!ctx_.blnDateiSuchen) return ctx_.strGewaehlteDatei;
    const std::string& file = eintrag(i).SchlüsselNT;
    const std::string& folder = eintrag(i).Werteliste;
    if (folder.starts_with('%')) {
        if (!ctx_.istNT()) return windowsFolder(ctx_) + "\\" + file;
        const auto parts = Split(folder, "%");
        return targetEnvironment(ctx_, parts.size() > 1 ? parts[1] : std::string()) + "\\" + file;
    }
    return folder.empty() ? file : folder + "\\" + file;
}

std::filesystem::path TippMaschine::iniFile(std::int16_t i) const {
    const TargetFiles& files = ctx_.target().files();
    return ctx_.blnDateiSuchen ? files.find(iniPath(i)) : userPath(files, iniPath(i));
}

void TippMaschine::DateiCheck(std::int16_t i, std::string& path, bool& found) {
    reportAndGoOn(ctx_, "DateiCheck", [&] {
        path = iniPath(i);
        found = false;
        dateiHindernis_.clear();
        try {
            std::error_code error;
            found = std::filesystem::is_regular_file(iniFile(i), error);
        } catch (const NumberedError& error) {
            dateiHindernis_ = error.what();   // no file of this machine, which no search mends
            return;
        }
        if (found || modus_ == Modus::NurAnsehen) return;
        if (!ctx_.port.ask(meldung::DateiSuchen1 + path + meldung::DateiSuchen2)) return;
        const std::string& name = eintrag(i).SchlüsselNT;
        if (const auto choice = ctx_.port.chooseFile({path, name + " |" + name, meldung::DateiSuchenTitel, false})) {
            found = true;
            ctx_.strGewaehlteDatei = path = *choice;
            ctx_.blnDateiSuchen = false;
        }
    });
}

void TippMaschine::fileMissing(const std::string& path, StatusZeile* label) {
    if (label == nullptr) return;
    *label = {"[Datei: " + path + (dateiHindernis_.empty() ? " nicht vorhanden]" : meldung::DateiNichtErreichbar), StatusFarbe::Fehlt};
    FB_RegFile(false);
    FB_KeySave(false);
    Hauptfenster& f = fenster();
    f.fraSteuerung = false;
    f.txtInfo = dateiHindernis_;
    f.txtInfoFarbe = f.fraInfoFarbe = TextFarbe::Rot;
    f.fraInfo = meldung::DateiNichtGefunden;
}

void TippMaschine::ReadINITipp(std::int16_t i, StatusZeile* label, bool& found) {
    reportAndGoOn(ctx_, "ReadINITipp", [&] {
        Arbeitswert& w = wert(i);
        std::string path;
        w.gefunden = w.ignoriert = false;
        DateiCheck(i, path, found);
        if (found) {
            const Profildatei content = loadProfildatei(iniFile(i));
            const auto value = content.value(eintrag(i).Schlüssel, eintrag(i).Wertname);
            w.gefunden = value.has_value();
            w.strAnzeigeWert = w.strAktuellerWert = value.value_or(std::string());
            if (isTyped(eintrag(i)) && content.value(eintrag(i).Schlüssel, eintrag(i).Wertname, 0) != value) w.sperre = meldung::IniSperre;
            if (label != nullptr) {
                FB_KeySave(true);
                const bool there = !w.strAktuellerWert.empty();
                *label = {"[Wert in " + path + (there ? " vorhanden]" : " nicht vorhanden]"), there ? StatusFarbe::Gefunden : StatusFarbe::Fehlt};
                allowDelete(i, there && ctx_.einstellungen.LöschenAktiv);
                w.blnWertGelesen = there;
            }
        } else {
            w.blnWertGelesen = false;
            fileMissing(path, label);
        }
        FB_RegFile(false);
        FB_KeyInfo(false);
        ctx_.blnSchreibrecht = true;
    });
}

// The files with what is to stand in them, before any is written. A value that no INI file can hold refuses the whole save.
void TippMaschine::planIniFiles(bool loeschen, Aenderung& change, std::string& refusal, const std::function<bool(const std::string& path)>& mayBeMade) {
    std::map<std::filesystem::path, Profildatei> files;
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) {
        if (eintrag(i).Ausgabeart == art::BootINI) continue;
        const Arbeitswert& w = wert(i);
        const bool untouched = !w.beruehrt && (w.gefunden || speakerOf(i) != i);
        if (!loeschen && (untouched || w.strAnzeigeWert.empty())) continue;
        const auto file = iniFile(i);
        auto loaded = files.find(file);
        if (loaded == files.end()) {
            std::error_code error;
            const bool there = std::filesystem::is_regular_file(file, error);
            if (!there && !mayBeMade(iniPath(i))) continue;
            loaded = files.emplace(file, there ? loadProfildatei(file) : Profildatei()).first;
            change.dateien.push_back({file.string(), loaded->second.bytes(), there, {}, false});
        }
        refusal = putValue(loaded->second, eintrag(i), w, loeschen);
        if (!refusal.empty()) return;
    }
    for (DateiBild& bild : change.dateien)
        if (const auto file = files.find(bild.datei); file != files.end()) bild.neu = file->second.bytes();
}

bool TippMaschine::SaveINITipp(bool loeschen) {
    bool saved = false;
    if (loeschen && !ctx_.port.ask(meldung::EintragLoeschen)) return false;
    reportAndGoOn(ctx_, "SaveINITipp", [&] {
        std::string refusal;
        Aenderung trial = newChange(Aenderung::Art::IniDatei), change = trial;
        planIniFiles(loeschen, trial, refusal, [](const std::string&) { return true; });   // before the boot file is written
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        const auto boot = bootFileEntry();
        const std::string first = !trial.dateien.empty() ? trial.dateien.front().datei : boot ? iniFile(*boot).string() : std::string();
        if (!ctx_.blnLokal && !first.empty() && !mayBeWritten(ctx_.port, first)) return;   // all are of one machine
        if (boot && !saveBootFile(*boot)) return;
        planIniFiles(loeschen, change, refusal, [&](const std::string& path) { return ctx_.port.ask(meldung::DateiNeu1 + path + meldung::DateiNeu2); });
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        if (!change.dateien.empty()) {
            LaufendeAenderung running(recorder_, change);
            for (DateiBild& bild : change.dateien)
                if (!(bild.geschrieben = writeProfildatei(bild.datei, bild.neu)))
                    return ctx_.port.tell(meldung::IniSchreibgeschuetzt, box::Exclamation);
        }
        saved = true;
    });
    ctx_.bootEingabe.reset();   // refused or failed: given up
    if (!saved) return false;
    ctx_.blnGeaendert = false;
    TippsEntladen();
    DBTippsAusgeben();
    return true;
}

// Takes the write protection away for good, as a changed file has no use for it.
bool TippMaschine::writeProfildatei(const std::filesystem::path& file, std::string_view bytes) {
    if (isReadOnly(file)) setReadOnly(file, false);
    try {
        std::filesystem::create_directories(file.parent_path());
        writeFileAtomic(file, bytes);
        return true;
    } catch (const std::exception& error) {
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
        return false;
    }
}

}  // namespace brenvik
