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
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {

constexpr std::size_t IniLaenge = 255;   // characters that are read of a value

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
        if (kindOf(e).typed && present && *present != Left(*present, IniLaenge) && w.strAnzeigeWert != e.Standardwert)
            return fmt::format(meldung::IniNurZumTeilGezeigt, e.Wertname);
        content.setValue(e.Schlüssel, e.Wertname, w.strAnzeigeWert);
        return {};
    } catch (const NumberedError& error) {
        return error.what() + std::string(meldung::NichtsGeaendert);
    }
}

}  // namespace

void TippMaschine::ReadINITipp(std::int16_t i, StatusZeile* label, bool& found) {
    reportAndGoOn(ctx_, "ReadINITipp", [&] {
        Arbeitswert& w = wert(i);
        std::string path;
        w.gefunden = w.ignoriert = false;
        files_.DateiCheck(i, path, found);
        if (found) {
            const Profildatei content = TipFiles::load(files_.file(i));
            const auto value = content.value(eintrag(i).Schlüssel, eintrag(i).Wertname);
            w.gefunden = value.has_value();
            w.strAnzeigeWert = w.strAktuellerWert = value.value_or(std::string());
            if (kindOf(eintrag(i)).typed && content.value(eintrag(i).Schlüssel, eintrag(i).Wertname, 0) != value) w.sperre = meldung::IniSperre;
            if (label != nullptr) {
                FB_KeySave(true);
                const bool there = !w.strAktuellerWert.empty();
                *label = {"[Wert in " + path + (there ? " vorhanden]" : " nicht vorhanden]"), there ? StatusFarbe::Gefunden : StatusFarbe::Fehlt};
                allowDelete(i, there && ctx_.einstellungen.LöschenAktiv);
                w.blnWertGelesen = there;
            }
        } else {
            w.blnWertGelesen = false;
            files_.missing(path, label);
        }
        FB_RegFile(false);
        FB_KeyInfo(false);
        ctx_.blnSchreibrecht = true;
    });
}

// The entry whose panel writes a section of a file itself.
std::optional<std::int16_t> TippMaschine::sectionEntry() const {
    for (const Panel& panel : tip_.window().panels)
        if (kindOf(panel).section) return panel.eintraege.front();
    return std::nullopt;
}

// The files with what is to stand in them, before any is written. A value that no INI file can hold refuses the whole save.
void TippMaschine::planIniFiles(bool loeschen, Aenderung& change, std::string& refusal, const std::function<bool(const std::string& path)>& mayBeMade) {
    std::map<std::filesystem::path, Profildatei> loaded;
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) {
        if (kindOf(eintrag(i)).section) continue;
        const Arbeitswert& w = wert(i);
        const bool untouched = !w.beruehrt && (w.gefunden || speakerOf(i) != i);
        if (!loeschen && (untouched || w.strAnzeigeWert.empty())) continue;
        const auto file = files_.file(i);
        auto found = loaded.find(file);
        if (found == loaded.end()) {
            std::error_code error;
            const bool there = std::filesystem::is_regular_file(file, error);
            if (!there && !mayBeMade(files_.path(i))) continue;
            found = loaded.emplace(file, there ? TipFiles::load(file) : Profildatei()).first;
            change.dateien.push_back({file.string(), found->second.bytes(), there, {}, false});
        }
        refusal = putValue(found->second, eintrag(i), w, loeschen);
        if (!refusal.empty()) return;
    }
    for (DateiBild& bild : change.dateien)
        if (const auto file = loaded.find(bild.datei); file != loaded.end()) bild.neu = file->second.bytes();
}

bool TippMaschine::SaveINITipp(bool loeschen) {
    bool saved = false;
    if (loeschen && !ctx_.port.ask(meldung::EintragLoeschen)) return false;
    reportAndGoOn(ctx_, "SaveINITipp", [&] {
        std::string refusal;
        Aenderung trial = newChange(Aenderung::Art::IniDatei), change = trial;
        planIniFiles(loeschen, trial, refusal, [](const std::string&) { return true; });   // before such a file is written
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        const auto own = sectionEntry();
        const std::string first = !trial.dateien.empty() ? trial.dateien.front().datei : own ? files_.file(*own).string() : std::string();
        if (!ctx_.blnLokal && !first.empty() && !mayBeWritten(ctx_.port, first)) return;   // all are of one machine
        if (own && !kindOf(eintrag(*own)).saveFile(*this, recorder_, *own)) return;
        planIniFiles(loeschen, change, refusal, [&](const std::string& path) { return ctx_.port.ask(meldung::DateiNeu1 + path + meldung::DateiNeu2); });
        if (!refusal.empty()) return ctx_.port.tell(refusal, box::Exclamation);
        if (!change.dateien.empty()) {
            LaufendeAenderung running(recorder_, change);
            for (DateiBild& bild : change.dateien)
                if (!(bild.geschrieben = files_.write(bild.datei, bild.neu)))
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

}  // namespace brenvik
