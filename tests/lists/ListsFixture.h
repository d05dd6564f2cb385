#pragma once
// A small world with its lists: engine, registry, History.txt, journal and favourites in one folder.
#include "lists/ListFolders.h"
#include "lists/Lists.h"
#include "lists/undo/Drift.h"
#include "tipengine/EngineFixture.h"
#include "tipengine/values/Recorders.h"

namespace brenvik::test {

inline const std::vector<Zeile> ThreeValues = {
    {.Index = 1, .Überschrift = "Drei", .Ausgabeart = 2, .Datentyp = 1, .Wertname = "A", .AnzahlWerte = 2},
    {.Index = 2, .Ausgabeart = 2, .Datentyp = 4, .Wertname = "B", .HauptIndex = 1},
    {.Index = 3, .Ausgabeart = 2, .Datentyp = 1, .Wertname = "C", .HauptIndex = 1, .Schlüssel = "Software\\Neu\\Tief"}};

struct ListsFixture : EngineFixture {
    explicit ListsFixture(const std::vector<Zeile>& lines = ThreeValues) : EngineFixture(lines) {
        ctx->strEigeneSID = Sid;
        ctx->strUserName = "Prüfer";
        ctx->einstellungen.strHistoryPfad = ctx->einstellungen.strFavoritenPfad = dir.path().string() + "/";
        start();
    }
    void start() {   // as at a program start
        lists.reset();
        relay = std::make_unique<Recorders>();
        lists = std::make_unique<Listen>(*engine2(*relay));
        relay->add(*lists);
        lists->LoadFHListe();
    }
    void change(const std::string& a, const std::string& b, const std::string& c) {
        show("Drei");
        engine->input().userText(0, a);
        engine->input().userText(1, b);
        engine->input().userText(2, c);
        saveOk();
    }
    std::string values() { return get("HKCU\\Software\\Probe\\A") + " " + get("HKCU\\Software\\Probe\\B") + " " + get("HKCU\\Software\\Neu\\Tief\\C"); }
    std::string file(const char* name = HistoryFile) { return bytesOf(dir / name); }
    // The whole registry and all files of the drive but copies kept for safety, in a fixed order.
    std::string wholeState() {
        struct Collector final : TreeSink {
            std::vector<std::string> path, lines;
            void enter(std::string_view name, const KeyDetails& details) override {
                path.push_back((path.empty() ? std::string() : path.back() + "\\") + std::string(name));
                lines.push_back(path.back() + (details.flags + details.userFlags != 0 ? " " + std::to_string(details.flags) + " " + std::to_string(details.userFlags) : ""));
            }
            void value(std::string_view name, const RawValue& value) override { lines.push_back(path.back() + "\\" + std::string(name) + " = " + shownRaw(value)); }
            void leave() override { path.pop_back(); }
        } found;
        for (const Root root : {Root::Users, Root::LocalMachine}) store->walk(root, "", found);
        std::sort(found.lines.begin(), found.lines.end());
        std::string text;
        for (const std::string& line : found.lines) text += line + "\n";
        for (const char* file : {"windows/win.ini", "boot.ini"})
            if (std::filesystem::exists(dir / "drive_c" / file)) text += bytesOf(dir / "drive_c" / file);
        return text;
    }
    // What the window of conflicts is to be answered with from now on, and its rows when it came last.
    void onConflicts(bool proceed, bool restore) {
        port.onWindow("frmBVK_UndoConflicts", [this, proceed, restore](WindowRequest& request) {
            auto& asked = dynamic_cast<UndoConflictsRequest&>(request);
            conflicts.clear();
            for (auto& row : asked.rows) {
                EXPECT_FALSE(row.restore);   // nothing is preset
                conflicts.push_back(row.place + ": " + row.before + ", " + row.after + ", " + row.now + " " + row.by);
                row.restore = restore;
            }
            asked.proceed = proceed;
        });
    }
    std::vector<std::string> conflicts;
    // All that does not stand as it was set: "state place: set, now".
    std::string drifted() {
        std::string text;
        for (const DriftEntry& entry : drift(*ctx, lists->journal())) {
            if (entry.state == DriftState::AsSet) continue;
            text += entry.state == DriftState::Differs ? "differs " : "unreadable ";
            text += std::to_string(entry.nummer) + " " + entry.place + ": ";
            if (entry.isLine) text += entry.setLine.value_or("-") + ", " + entry.nowLine.value_or("-") + "|";
            else text += shownRaw(entry.set) + ", " + shownRaw(entry.now) + "|";
        }
        return text;
    }
    bool exact(std::int64_t number) { return UndoAnswer(*ctx, lists->journal(), lists->history()).undo(number); }
    bool redo(std::int64_t number) { return UndoAnswer(*ctx, lists->journal(), lists->history()).restore(number); }
    bool told(std::int64_t number) {
        UndoAnswer exactly(*ctx, lists->journal(), lists->history());
        TipValues numbers(*ctx);
        return Undo(*ctx, lists->journal(), exactly, numbers).execute(lists->history().udtHistory().at(0).Zeile, number);
    }

    std::unique_ptr<Recorders> relay;
    std::unique_ptr<Listen> lists;

private:
    TipEngine* engine2(Recorders& recorders) {
        engine = std::make_unique<TipEngine>(*ctx, observer, recorders);
        engine->FrameStartEinstellungen();
        engine->tree().TreeEinlesen();
        return engine.get();
    }
};

}  // namespace brenvik::test
