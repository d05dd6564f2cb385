#include "shell/program/ConnectSearchOptionsBrowser.h"

#include <QApplication>
#include <memory>

#include "browser/RegBrowser.h"
#include "frame/program/Options.h"
#include "frame/program/StartPassword.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/widgets/Colours.h"
#include "tipdb/TipSearch.h"
#include "tipengine/Program.h"

namespace brenvik {

void zeigeSuche(TippMaschine& engine, Suchauftrag& auftrag) {
    Context& ctx = engine.context();
    SuchenAnfrage request;
    request.auftrag = auftrag;
    request.suchen = [&ctx](const Suchauftrag& order) {
        Suchergebnis result;
        const std::string condition = suchBedingung(order);
        if (condition.empty()) return result;
        result.art = DBSuchen(ctx, condition, result.treffer) ? Suchergebnis::Art::Gesucht : Suchergebnis::Art::Gescheitert;
        return result;
    };
    ctx.port.showWindow(request);
    auftrag = request.auftrag;
    if (!request.gewaehlt.empty()) engine.tree().TippOeffnen(request.gewaehlt);
}

void zeigeOptionen(TippMaschine& engine, const std::function<void()>& listenOrdnerNeu) {
    Context& ctx = engine.context();
    if (!engine.DatenSichern()) return;
    const Settings before = ctx.einstellungen;
    const bool listsWere = ctx.blnHistoryAktiv && ctx.blnFavoritenAktiv;
    OptionenAnfrage request(ctx);
    ctx.port.showWindow(request);
    const Settings& now = ctx.einstellungen;
    const bool folders = now.strHistoryPfad != before.strHistoryPfad || now.strFavoritenPfad != before.strFavoritenPfad;
    const bool raised = !listsWere && ctx.blnHistoryAktiv && ctx.blnFavoritenAktiv;
    if ((folders || raised) && listenOrdnerNeu) listenOrdnerNeu();
    if (now.Farbschema != before.Farbschema) setColourMode(*qApp, colourModeOf(now.Farbschema));
    // What the panels show and allow depends on these.
    if (now.BSSystemAktiv == before.BSSystemAktiv && now.LöschenAktiv == before.LöschenAktiv) return;
    engine.reloadTipp();
}

void zeigeRegBrowser(TippMaschine& engine, ChangeRecorder& recorder) {
    const auto browser = makeRegBrowser(engine.context(), recorder);
    RegBrowseAnfrage request(*browser);
    engine.context().port.showWindow(request);
    if (!browser->changedAnything()) return;
    if (engine.DatenSichern(Verbleib::WirdErsetzt)) engine.reloadTipp();      // the panels show what stands in the registry now
}

void verbindeSucheOptionenBrowser(Fensterteile& teile) {
    TippMaschine& engine = teile.programm.maschine();
    teile.laden.startPasswort = [&engine] { return StartPasswort(engine.context()); };
    teile.fenster.setCommand(Befehl::Suchen, [&engine, order = std::make_shared<Suchauftrag>()] { zeigeSuche(engine, *order); });
    teile.fenster.setCommand(Befehl::Optionen, [&engine, &steps = teile.laden] { zeigeOptionen(engine, steps.listenOrdnerNeu); });
    teile.fenster.setCommand(Befehl::RegBrowser, [&engine, &recorder = teile.aufzeichnungen] { zeigeRegBrowser(engine, recorder); });
}

}  // namespace brenvik
