// Tips whose values lie in an INI file: finding the file, reading, writing.
#include <fmt/format.h>

#include <map>

#include "frame/DateiSystem.h"
#include "frame/Erkennung.h"
#include "frame/Konvertierung.h"
#include "frame/Profildatei.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"
#include "tipengine/Meldungen.h"
#include "tipengine/TippMaschine.h"

namespace brenvik {
namespace {

constexpr std::uintmax_t IniGrenze = 16u << 20;
constexpr std::size_t IniLaenge = 255;   // characters that are read of a value

// Puts the value of an entry into the file's content. Answers an empty text, or in German why it cannot stand there.
std::string putValue(Profildatei& content, const TippEintrag& e, const Arbeitswert& w, bool loeschen) {
    try {
        const auto present = content.value(e.Schlüssel, e.Wertname, 0);
        if (!loeschen && !w.beruehrt && present) return {};   // made by somebody else since it was read
        if (loeschen || w.strAnzeigeWert == DelKey) {
            content.removeKey(e.Schlüssel, e.Wertname);
            return {};
        }
        const bool shownInPart = e.Ausgabeart == art::TextWerte && present && *present != Left(*present, IniLaenge);
        if (shownInPart && w.strAnzeigeWert != e.Standardwert) return fmt::format(meldung::IniNurZumTeilGezeigt, e.Wertname);
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
        if (!ctx_.istNT()) return ctx_.strWindir + "\\" + file;
        const auto parts = Split(folder, "%");
        return umgebungswert(ctx_, parts.size() > 1 ? parts[1] : std::string()) + "\\" + file;
    }
    return folder.empty() ? file : folder + "\\" + file;
}

std::filesystem::path TippMaschine::iniFile(std::int16_t i) const {
    return ctx_.blnDateiSuchen ? hostPath(ctx_, iniPath(i)) : userPath(ctx_, iniPath(i));
}

void TippMaschine::DateiCheck(std::int16_t i, std::string& path, bool& found) {
    reportAndGoOn(ctx_, "DateiCheck", [&] {
        path = iniPath(i);
        std::error_code error;
        found = std::filesystem::is_regular_file(iniFile(i), error);
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
    *label = {"[Datei: " + path + " nicht vorhanden]", StatusFarbe::Fehlt};
    FB_RegFile(false);
    FB_KeySave(false);
    Hauptfenster& f = fenster();
    f.fraSteuerung = false;
    f.txtInfo.clear();
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
            const auto value = loadProfildatei(iniFile(i)).value(eintrag(i).Schlüssel, eintrag(i).Wertname);
            w.gefunden = value.has_value();
            w.strAnzeigeWert = w.strAktuellerWert = value.value_or(std::string());
            if (label != nullptr) {
                FB_KeySave(true);
                const bool there = !w.strAktuellerWert.empty();
                *label = {"[Wert in " + path + (there ? " vorhanden]" : " nicht vorhanden]"), there ? StatusFarbe::Gefunden : StatusFarbe::Fehlt};
                FB_KeyDel(there && ctx_.einstellungen.LöschenAktiv);
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
        const bool untouched = !w.beruehrt && w.gefunden;
        if (!loeschen && (untouched || w.strAnzeigeWert.empty())) continue;
        if (w.strAnzeigeWert.find_first_of(std::string("\r\n\0", 3)) != std::string::npos) {
            refusal = fmt::format(meldung::WertUnpassend, w.strAnzeigeWert, "INI-Eintrag");
            return;
        }
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
        for (std::int16_t i = 1; i <= letzterEintrag(); ++i)
            if (eintrag(i).Ausgabeart == art::BootINI && !saveBootFile(i)) return;
        Aenderung change = newChange(Aenderung::Art::IniDatei);
        std::string refusal;
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
