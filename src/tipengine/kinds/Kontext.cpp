#include "tipengine/kinds/Kontext.h"

#include <fmt/format.h>

#include "frame/Reports.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "registry/ValueOperations.h"
#include "tipengine/Messages.h"
#include "tipengine/kinds/Parts.h"
#include "tipengine/tip/FileChoice.h"
#include "tipengine/values/KeyImage.h"

namespace brenvik {
namespace {
constexpr std::int16_t RegSz = 1;

// The text as a string value. A text with variables in it keeps its type, and what was not changed stays as it is.
RawValue asString(const std::string& text, const std::optional<RawValue>& present) {
    if (present && present->type != regtype::Dword && toText(*present) == text) return *present;
    return fromText(text, present && present->type == regtype::ExpandSz ? regtype::ExpandSz : regtype::Sz);
}

constexpr char Programme[] = "Programme (*.EXE;*.COM.;*.BAT;*.CMD)|*.EXE;*.COM;*.BAT;*.CMD|";
}  // namespace

KontextKind::KontextKind() : Kind({.number = art::Kontext, .sourceName = "kontextmenue", .traceName = "Kontextmenü", .ticks = true, .menu = true}) {}

void KontextKind::build(KindHost& host, std::int16_t) const {
    Panel& panel = addPanel(host, 1);
    panel.label = host.tip.entry(1).Beschriftung;
    host.captionsForEntries();
    ReadRecKontext(host, panel);
}

void KontextKind::ReadRecKontext(KindHost& host, Panel& panel) const {
    Context& ctx = host.tip.context();
    reportAndGoOn(ctx, "ReadRecKontext", [&] {
        const std::string unterWert = host.tip.entry(1).Werteliste;
        host.tip.replaceSid(1);
        ctx.objBVKReg.SetPath(ctx.strRechnername, host.tip.keyPath(1) + "\\");
        const bool found = ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK);
        if (found)
            addKeyRows(host, panel);
        else
            ctx.trace.write("Wert nicht vorhanden");
        fillKeyRows(host, panel, unterWert);
        MainWindow& f = host.tip.window();
        f.KeyDel = f.Default = f.KeySave = f.RegFile = !panel.lines.empty();
        ctx.blnSchreibrecht = true;
        panel.status = found ? StatusLine{strBVKTexte(20), StatusColour::Gefunden} : StatusLine{strBVKTexte(21), StatusColour::Missing};
        host.tip.value(1).blnWertGelesen = true;
        host.tip.value(1).gefunden = found;
    });
}

// The ticks choose what a delete takes; they are no change.
void KontextKind::tick(KindHost& host, Panel& panel, std::size_t row, bool on) const {
    if (!panel.lines[row].readOnly) panel.lines[row].ticked = on;
    host.redraw(panel);
}

void KontextKind::selectRow(Panel& panel, int row) const { panel.chosenRow = row; }

std::string KontextKind::shownText(const CurrentTip&, const Panel& panel, std::int16_t) const { return rowTexts(panel); }

void KontextKind::checkSource(const SourceCheck& check) const {
    if (check.row.INITipp) check.complain("INITipp", "Ein Kontextmenü liegt in der Registry.");
    if (check.entries > 1) check.complain("Ausgabeart", "Ein Kontextmenü-Tipp hat nur einen Wert.");
    if (!check.row.Wertname.value_or("").empty()) check.complain("Wertname", "Ein Kontextmenü-Tipp hat keinen Wertnamen.");
    if (check.row.Standardwert) check.complain("Standardwert", "Ein Kontextmenü-Tipp hat keinen Standardwert.");
}

// --- the window on one entry ---

std::string MenuEntries::key() const { return tip_.last() >= 1 ? tip_.keyPath(1) : std::string(); }

Panel* MenuEntries::list() const {
    for (Panel& panel : tip_.window().panels)
        if (kindOf(panel).menu) return &panel;
    return nullptr;
}

BearbeitenRequest MenuEntries::request(bool neu) {
    Context& ctx = tip_.context();
    BearbeitenRequest dialog;
    dialog.neu = neu;
    dialog.commandRead = [this, &ctx](BearbeitenRequest& d) {
        if (d.txtKeyName.empty()) return;
        reportAndGoOn(ctx, "KontextBefehlLesen", [&] {
            ctx.objBVKReg.SetPath(ctx.strRechnername, key() + "\\" + d.txtKeyName + "\\Command\\");
            if (ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK)) d.txtBefehl = ctx.objBVKReg.ReadValue(true);
        });
    };
    dialog.save = [this](BearbeitenRequest& d) { return KontextSpeichern(d); };
    dialog.commandFind = [&ctx](BearbeitenRequest& d) {
        const auto file = ctx.port.chooseFile({choiceStart(ctx, {}), Programme + strBVKTexte(109) + "(*.*)|*.*", strBVKTexte(108), false});
        if (file) d.txtBefehl = chosenPath(ctx, *file);
    };
    if (const Panel* panel = dialog.neu ? nullptr : list(); panel != nullptr && panel->chosenRow >= 0) {
        const ListLine& row = panel->lines.at(static_cast<std::size_t>(panel->chosenRow));
        dialog.txtKeyName = row.text;
        dialog.txtBeschreibung = row.subText;
        dialog.commandRead(dialog);
    }
    return dialog;
}

bool MenuEntries::KontextSpeichern(BearbeitenRequest& d) {
    Context& ctx = tip_.context();
    const std::string name = d.txtKeyName;
    if (name.empty() || d.txtBefehl.empty() || tip_.last() < 1) return false;
    if (Trim(name).empty() || name.find('\\') != std::string::npos) return ctx.port.tell(messages::KeyNameInvalid, box::Exclamation), false;
    const std::string path = key() + "\\" + name;
    const Panel* menu = list();
    const ListLine* selected = menu != nullptr && menu->chosenRow >= 0 ? &menu->lines.at(static_cast<std::size_t>(menu->chosenRow)) : nullptr;
    if (menu == nullptr && !ctx.port.ask(fmt::format(messages::KontextForeignTip, path), box::Exclamation)) return false;

    bool saved = false;
    reportAndGoOn(ctx, "KontextSpeichern", [&] {
        ctx.objBVKReg.SetPath(ctx.strRechnername, path + "\\");
        const bool exists = ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK);
        const bool sameEntry = !d.neu && selected != nullptr && equalText(selected->text, name);
        if (exists && !sameEntry && !ctx.port.ask(fmt::format(messages::KontextThere, name))) return;
        write(d, path, exists, selected);
        saved = true;
    });
    return saved;
}

void MenuEntries::write(BearbeitenRequest& d, const std::string& path, bool exists, const ListLine* selected) {
    Context& ctx = tip_.context();
    const auto at = [&](const std::string& place) -> BVKRegistry& {
        ctx.objBVKReg.SetPath(ctx.strRechnername, place);
        return ctx.objBVKReg;
    };
    const std::int16_t tippIndex = tip_.entry(1).TippIndex;
    Change change = tip_.newChange(Change::Art::ContextMenu);
    if (exists) change.key = keyImages(ctx.objBVKReg, ctx.strRechnername, path);
    change.values.push_back({ctx.strRechnername, path + "\\", tippIndex, at(path + "\\").ReadRaw(), std::nullopt, false});
    change.values.push_back({ctx.strRechnername, path + "\\Command\\", tippIndex, at(path + "\\Command\\").ReadRaw(), std::nullopt, false});
    change.values[1].neu = asString(d.txtBefehl, change.values[1].alt);
    RunningChange running(recorder_, change);
    at(path + "\\").WriteValue("", 0);   // makes the key, leaves its values alone
    if (!d.txtBeschreibung.empty()) change.values[0].neu = asString(d.txtBeschreibung, change.values[0].alt);
    else if (selected != nullptr && !selected->subText.empty()) change.values[0].neu = fromText("", RegSz);
    else change.values[0].neu = change.values[0].alt;
    if (change.values[0].neu) at(path + "\\").WriteRaw(*change.values[0].neu);
    running.written(0);
    at(path + "\\Command\\").WriteRaw(*change.values[1].neu);
    running.written(1);
    ctx.port.tell(strBVKTexte(161));
}

}  // namespace brenvik
