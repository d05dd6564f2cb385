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

void showSearch(TipEngine& engine, SearchOrder& searchOrder) {
    Context& ctx = engine.context();
    SuchenRequest request;
    request.searchOrder = searchOrder;
    request.suchen = [&ctx](const SearchOrder& order) {
        SearchResult result;
        const std::string condition = searchCondition(order);
        if (condition.empty()) return result;
        result.art = DBSuchen(ctx, condition, result.hits) ? SearchResult::Art::Sought : SearchResult::Art::Failed;
        return result;
    };
    ctx.port.showWindow(request);
    searchOrder = request.searchOrder;
    if (!request.chosen.empty()) engine.tree().TippOeffnen(request.chosen);
}

void showOptions(TipEngine& engine, const std::function<void()>& listFolderNew) {
    Context& ctx = engine.context();
    if (!engine.DatenSichern()) return;
    const Settings before = ctx.einstellungen;
    const bool listsWere = ctx.blnHistoryAktiv && ctx.blnFavoritenAktiv;
    OptionenRequest request(ctx);
    ctx.port.showWindow(request);
    const Settings& now = ctx.einstellungen;
    const bool folders = now.strHistoryPfad != before.strHistoryPfad || now.strFavoritenPfad != before.strFavoritenPfad;
    const bool raised = !listsWere && ctx.blnHistoryAktiv && ctx.blnFavoritenAktiv;
    if ((folders || raised) && listFolderNew) listFolderNew();
    if (now.ColourScheme != before.ColourScheme) setColourMode(*qApp, colourModeOf(now.ColourScheme));
    // What the panels show and allow depends on these.
    if (now.BSSystemAktiv == before.BSSystemAktiv && now.LöschenAktiv == before.LöschenAktiv) return;
    engine.reloadTip();
}

void showRegBrowser(TipEngine& engine, ChangeRecorder& recorder) {
    const auto browser = makeRegBrowser(engine.context(), recorder);
    RegBrowseRequest request(*browser);
    engine.context().port.showWindow(request);
    if (!browser->changedAnything()) return;
    if (engine.DatenSichern(Whereabouts::IsReplaced)) engine.reloadTip();      // the panels show what stands in the registry now
}

void connectSearchOptionsBrowser(WindowParts& parts) {
    TipEngine& engine = parts.program.engine();
    parts.laden.startPassword = [&engine] { return StartPassword(engine.context()); };
    parts.windows.setCommand(Command::Suchen, [&engine, order = std::make_shared<SearchOrder>()] { showSearch(engine, *order); });
    parts.windows.setCommand(Command::Optionen, [&engine, &steps = parts.laden] { showOptions(engine, steps.listFolderNew); });
    parts.windows.setCommand(Command::RegBrowser, [&engine, &recorder = parts.recorders] { showRegBrowser(engine, recorder); });
}

}  // namespace brenvik
