// Deleting what the Tip on screen stands for, and telling other programs of changes.
#include "frame/Konvertierung.h"
#include "frame/Reports.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"
#include "tipengine/Schluesselbild.h"
#include "tipengine/TippMaschine.h"
#include "tipengine/kinds/Kind.h"

namespace brenvik {
namespace {
constexpr const char* SymbolGroesse = "HKCU\\Control Panel\\Desktop\\WindowMetrics\\Shell Icon Size";
constexpr std::uint32_t AbbruchWennHaengt = 2, WartezeitMs = 10000, SymboleNeu = 42;
}  // namespace

bool TippMaschine::WertDel(std::int16_t index) {
    ctx_.trace.write("Prozedur: WertDel -Ende-");   // stands here for the start line
    ctx_.trace.write("--- P: " + traceText(index));
    bool deleted = false;
    reportAndGoOn(ctx_, "WertDel", [&] {
        const std::string path = valuePath(index);
        ctx_.trace.write("--- Lösche Wert: " + path);
        if (valueOf(index).ReadRaw() && ctx_.objBVKReg.CheckAccess(KEY_ALL_ACCESS_MASK)) {
            ctx_.objBVKReg.DeleteValue();
            deleted = true;
        }
    });
    ctx_.trace.write("--- R: " + traceText(deleted));
    ctx_.trace.write("Prozedur: WertDel -Ende-");
    return deleted;
}

void TippMaschine::deleteValues(Aenderung& change) {
    wert(1).strAnzeigeWert = strBVKTexte(60);
    change = newChange(Aenderung::Art::Loeschen);
    for (std::int16_t i = 1; i <= letzterEintrag(); ++i) {
        bool known = false;
        for (std::int16_t k = 1; k < i && !known; ++k) known = sameValue(k, i);
        if (auto raw = known ? std::nullopt : valueOf(i).ReadRaw()) change.werte.push_back(changeOfValue(i, std::move(raw), std::nullopt));
    }
    LaufendeAenderung running(recorder_, change);
    for (std::size_t k = 0; k < change.werte.size(); ++k) {
        selectValue(ctx_.objBVKReg, change.werte[k]);
        if (!ctx_.objBVKReg.CheckAccess(KEY_ALL_ACCESS_MASK)) continue;   // stays, and the rebuilt Tip shows it
        ctx_.objBVKReg.DeleteValue();
        running.written(k);
    }
}

void TippMaschine::deleteTickedKeys() {
    for (const Panel& panel : fenster().panels) {
        for (const ListenZeile& row : panel.zeilen) {
            if (!row.angehakt || row.text.empty()) continue;   // an empty name would mean the Tip's own key
            std::string path = keyPath(1) + "\\" + row.text;
            Aenderung change = newChange(kindOf(panel).menu ? Aenderung::Art::Kontextmenue : Aenderung::Art::Schluessel);
            change.schluessel = schluesselBilder(ctx_.objBVKReg, ctx_.strRechnername, path);
            for (SchluesselBild& image : change.schluessel) image.geloescht = true;   // what of it, the registry tells
            LaufendeAenderung running(recorder_, change);
            DelUnterKey(ctx_, path, true, ctx_.strRechnername);
            // HKCR shows two places as one, and deleting there reaches the upper one only.
            if (change.schluessel.size() < 2) continue;
            for (const SchluesselBild& image : change.schluessel) {
                std::string real = image.path;
                ctx_.objBVKReg.SetPath(ctx_.strRechnername, real + "\\");
                if (ctx_.objBVKReg.Exists(KEY_QUERY_VALUE_MASK)) DelUnterKey(ctx_, real, true, ctx_.strRechnername);
            }
        }
    }
}

bool TippMaschine::RegWerteLoeschen() {
    if (letzterEintrag() < 1) return false;
    const Kind& kind = kindOf(eintrag(1));
    const bool yes = ctx_.port.ask(strBVKTexte(kind.ticks ? 162 : 59));
    ctx_.klick();
    if (yes) {
        Aenderung change;
        try {
            if (kind.rowsAreKeys(eintrag(1).Wertname))
                deleteTickedKeys();
            else
                deleteValues(change);
        } catch (const NumberedError& error) {
            RegFehlermeldungen(ctx_, error.number, error.what());
            recorder_.offerTakeBack(change);
            if (change.werte.empty())
                reloadTipp();   // keys: the list shows those that are left
            else
                reportAndGoOn(ctx_, "RegWerteLoeschen", [&] { showWhatIsThere(); });
            return false;
        }
    }
    afterChange();
    return yes;
}

void TippMaschine::BroadCast() {
    reportAndGoOn(ctx_, "BroadCast", [&] {
        ctx_.platform.sendSettingChange(0, AbbruchWennHaengt, WartezeitMs);
        if (ctx_.aktuellerTipp.Neustart != 2) return;
        ctx_.trace.write("--- Lade Desktop neu");
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, SymbolGroesse);
        const auto before = ctx_.objBVKReg.ReadRaw();   // goes back byte for byte
        const std::string size = ReadRegistryKey(ctx_, SymbolGroesse, "32");
        if (SaveRegistryKey(ctx_, SymbolGroesse, numberText(std::int64_t{toLng(size)} + 1), 1))
            ctx_.platform.sendSettingChange(SymboleNeu, AbbruchWennHaengt, WartezeitMs);
        ctx_.objBVKReg.SetPath(ctx_.strLokalerRechner, SymbolGroesse);
        if (before)
            ctx_.objBVKReg.WriteRaw(*before);
        else
            ctx_.objBVKReg.DeleteValue();
    });
}

}  // namespace brenvik
