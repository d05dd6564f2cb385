// Any sequence of changes over all shipped Tips, by every road there is, with another program writing in between: taken back, all
// of it stands as it did, or what others changed is named; and drift agrees with a comparison of its own at every step. On the
// embedded Windows and on one in a folder.
#include <random>
#include <set>

#include "frame/files/FileSystem.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"
#include "lists/Lists.h"
#include "lists/undo/Drift.h"
#include "registry/ValueOperations.h"
#include "registry/hivefile/HiveFilesImpl.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"
#include "tipengine/EngineFixture.h"
#include "tipengine/Program.h"
#include "tipengine/WindowRequests.h"
#include "tipengine/values/Recorders.h"

namespace brenvik::test {
namespace {

using State = std::map<std::string, std::string>;   // "HKEY_USERS\...\key\\name" and "key\" to content; "C:\..." to bytes

// Says yes to everything; conflicts are settled by the wish of the moment.
class AgreeingPort final : public UserPort {
public:
    Answer messageBox(const MessageBox& request) override {
        last = request.text;
        const int buttons = request.flags & 0xF;
        return buttons == box::YesNo || buttons == box::YesNoCancel ? Answer::Yes : buttons == box::RetryCancel ? Answer::Cancel : Answer::OK;
    }
    std::optional<std::string> chooseFile(const FileChoice&) override { return std::nullopt; }
    std::optional<std::string> chooseFolder(std::string_view, std::string_view) override { return std::nullopt; }
    std::optional<Rgb> chooseColour(Rgb) override { return std::nullopt; }
    void showWindow(WindowRequest& request) override {
        if (auto* boot = dynamic_cast<BootINIRequest*>(&request)) boot->reply = BootINIRequest::Reply::Overwrite;
        if (auto* types = dynamic_cast<DatentypRequest*>(&request)) types->weiter = true;
        auto* conflicts = dynamic_cast<UndoConflictsRequest*>(&request);
        if (conflicts == nullptr) return;
        for (auto& row : conflicts->rows) {
            row.restore = restore;
            (restore ? overwritten : kept).insert(row.place);
            if (row.by == "von anderer Seite") foreign.insert(row.place);
        }
        conflicts->proceed = true;
    }
    void setClipboard(std::string_view) override {}
    DateTime now() override { return {2002, 11, 9, 12, 30, static_cast<int>(calls++ / 3 % 60)}; }   // several changes share a second
    void sleepMs(int) override {}
    void letEventsRun() override {}
    void playSound(const std::string&) override {}
    void waitPointer(bool) override {}
    bool startProgram(const std::string&, const std::vector<std::string>&) override { return false; }
    bool openAddress(const std::string&) override { return false; }
    void showHelp(const std::string&, int) override {}

    bool restore = true;
    std::set<std::string> overwritten, kept, foreign;
    std::string last;
    unsigned calls = 0;
};

struct Content final : TreeSink {
    explicit Content(State& into, std::string top) : state(into), path(std::move(top)) {}
    void enter(std::string_view name, const KeyDetails&) override {
        lengths.push_back(path.size());
        if (lengths.size() > 1 || !name.empty()) path += "\\" + std::string(name);
        state[path + "\\"] = "key";
    }
    void value(std::string_view name, const RawValue& value) override { state[path + "\\\\" + std::string(name)] = shownRaw(value) + bytesText(value.bytes); }
    void leave() override { path.resize(lengths.back()), lengths.pop_back(); }
    State& state;
    std::string path;
    std::vector<std::size_t> lengths;
};

// The lines of an INI file by "section\nkey\n", and which of several equal ones.
State linesOf(const std::string& bytes) {
    State lines;
    std::set<std::string> seen;
    std::string section;
    for (std::string line : Split(Replace(utf8FromAnsi(bytes), "\r\n", "\n"), "\n")) {
        line = Trim(line);
        if (line.starts_with('[')) section = seen.insert(lowerCase(line)).second ? lowerCase(line.substr(1, line.find(']') - 1)) + "\n" : "";
        const std::size_t equals = line.find('=');
        if (section.empty() || equals == std::string::npos || line.starts_with('[') || line.starts_with(';')) continue;
        std::string place;
        for (int n = 0; place.empty() || lines.contains(place); ++n) place = section + lowerCase(Trim(line.substr(0, equals))) + "\n" + std::to_string(n);
        lines[place] = "=" + Trim(line.substr(equals + 1));
    }
    return lines;
}

class World {
public:
    World(unsigned seed, bool mounted) : random_(seed), mounted_(mounted) {
        start();
        for (const char* place : {"HKCU\\Software\\Classes", "HKLM\\Software\\Classes"})
            for (const char* parent : {"\\Directory\\shell\\", "\\Folder\\shell\\", "\\*\\shell\\", "\\Drive\\shell\\"})
                for (const char* name : {"eins", "zwei"})
                    if (random_() % 4 != 0) put(std::string(place) + parent + name + "\\Command\\", fromText(std::string(place) + name, regtype::Sz));
        first_ = expected_ = state();
    }

    void start() {
        lists_.reset();
        program_.reset();
        recorders_ = std::make_unique<Recorders>();
        program_ = std::make_unique<Program>(port, platform_, ProgramOptions{dir_.path(), std::filesystem::path(BRENVIK_PROGRAMM_DIR)}, observer_, *recorders_);
        program_->loadSettings();
        program_->detectSystem();
        if (mounted_) mount();
        ctx().intBS = 6;
        ctx().einstellungen.BSSystemAktiv = false;
        ctx().einstellungen.SoundOn = false;
        ctx().einstellungen.LöschenAktiv = true;
        ctx().einstellungen.strHistoryPfad = ctx().einstellungen.strFavoritenPfad = dir_.path().string() + "/";
        ASSERT_TRUE(program_->loadDatabase());
        engine().FrameStartEinstellungen();
        engine().tree().TreeEinlesen();
        lists_ = std::make_unique<Listen>(engine());
        recorders_->add(*lists_);
        lists_->LoadFHListe();
    }

    // One step, and the comparison behind it.
    void step() {
        const State before = state();
        const int what = static_cast<int>(random_() % 20);
        said_ = "";
        if (what < 6) saveTip();
        else if (what < 7) defaultTip();
        else if (what < 9) deleteTip();
        else if (what < 11) contextEntry();
        else if (what < 12) applySome();
        else if (what < 13) undo(true);
        else if (what < 15) undo(false);
        else if (what < 16) redo();
        else if (what < 17) restart();
        else return foreignWrite();
        const State after = state();
        for (const auto& [place, now] : after)
            if (const auto was = before.find(place); was == before.end() || was->second != now) own(place, now);
        for (const auto& [place, was] : before)
            if (!after.contains(place)) own(place, "");
        for (const char* file : Files) {
            const State then = linesOf(at(before, file)), now = linesOf(at(after, file));
            for (const State* lines : {&then, &now})
                for (const auto& [line, text] : *lines)
                    if (at(then, line) != at(now, line)) expectedLines_[lowerCase(file) + "\n" + line] = at(now, line);
        }
        compareDrift();
    }

    void takeAllBack() {
        port.restore = true;
        const State before = state();
        port.overwritten.clear(), port.foreign.clear();
        const auto heads = lists_->journal().heads();
        for (auto head = heads.rbegin(); head != heads.rend(); ++head) {
            if (isUndo(*head) || head->lineOnly) continue;
            const auto now = lists_->journal().head(head->nummer);
            if (now->undoneBy != 0) continue;
            EXPECT_TRUE(exactly().undo(head->nummer)) << head->nummer << ": " << port.last;
        }
        const State after = state();
        const auto differs = [](const State& left, const State& right, const std::string& place) {
            const auto a = left.find(place), b = right.find(place);
            return (a == left.end() ? "" : a->second) != (b == right.end() ? "" : b->second);
        };
        std::set<std::string> places;
        for (const State* s : {static_cast<const State*>(&first_), &before, &after})
            for (const auto& [place, content] : *s) places.insert(place);
        for (const std::string& place : places) {
            if (differs(first_, after, place)) {
                EXPECT_TRUE(touchedByOthers(place) || keptByWish(place)) << place << " was " << first_[place] << "\nis " << (after.contains(place) ? after.at(place) : "");
            }
            // What stands as the program left it is nobody else's, and a key of ours goes also if others made it anew, once it is empty.
            if (foreign_.contains(place) && !ours_.contains(place) && differs(before, expected_, place) && !place.ends_with('\\')) {
                EXPECT_FALSE(differs(before, after, place) && !named(place)) << "overwritten in silence: " << place;
            }
        }
        for (const std::string& place : port.foreign) EXPECT_TRUE(touchedAround(place)) << "blamed on others: " << place;
    }

    AgreeingPort port;

private:
    static constexpr const char* Files[] = {"C:\\WINDOWS\\win.ini", "C:\\WINDOWS\\system.ini", "C:\\WINDOWS\\control.ini", "C:\\boot.ini", "C:\\MSDOS.SYS"};
    static std::string at(const State& s, const std::string& place) {
        const auto found = s.find(place);
        return found == s.end() ? std::string() : found->second;
    }
    // A Windows in a folder, with what the embedded one holds, becomes the machine worked on.
    void mount() {
        const auto folder = dir_.path() / "windows", user = folder / "Dokumente und Einstellungen" / "Brenvik";
        const auto classes = user / "Lokale Einstellungen/Anwendungsdaten/Microsoft/Windows";
        if (!std::filesystem::exists(folder)) {
            std::filesystem::create_directories(folder / "WINDOWS/system32/config");
            std::filesystem::create_directories(classes);
            RegStore& own = program_->localStore();
            for (const char* hive : {"System", "Software"}) ASSERT_TRUE(RegfHiveFiles().save(own, Root::LocalMachine, hive, folder / "WINDOWS/system32/config" / hive));
            ASSERT_TRUE(RegfHiveFiles().save(own, Root::CurrentUser, "", user / "NTUSER.DAT"));
            own.createKey(Root::CurrentUser, "Software\\Classes");
            ASSERT_TRUE(RegfHiveFiles().save(own, Root::CurrentUser, "Software\\Classes", classes / "UsrClass.dat"));
            for (const char* file : Files)
                if (const auto from = ctx().target().files().find(file); std::filesystem::exists(from)) std::filesystem::copy_file(from, folder / Replace(std::string(file).substr(3), "\\", "/"));
        }
        ASSERT_EQ(ctx().objBVKReg.ConnectRemote(folder.string(), 0x80000002), 0);
        ctx().strRechnername = folder.string();
        ctx().blnLokal = false;
        program_->takeProfile();
    }
    RegStore& store() { return ctx().target().store(); }
    Context& ctx() { return program_->context(); }
    TipEngine& engine() { return program_->engine(); }
    UndoAnswer exactly() { return UndoAnswer(ctx(), lists_->journal(), lists_->history()); }
    std::size_t any(std::size_t count) { return random_() % count; }

    void put(const std::string& path, const std::optional<RawValue>& value) {
        ctx().objBVKReg.SetPath(ctx().strRechnername, path);
        value ? ctx().objBVKReg.WriteRaw(*value) : void(ctx().objBVKReg.DeleteValue());
    }

    State state() {
        State all;
        for (const Root root : {Root::Users, Root::LocalMachine}) {
            Content content(all, longRootName(root));
            store().walk(root, "", content);
        }
        std::erase_if(all, [](const auto& entry) { return entry.first.starts_with(std::string("HKEY_LOCAL_MACHINE\\Software\\Brenvik")); });
        for (const char* file : Files)
            if (const auto path = ctx().target().files().find(file); std::filesystem::exists(path)) all[file] = bytesOf(path);
        return all;
    }

    void own(const std::string& place, const std::string& now) {
        expected_[place] = now;
        ours_.insert(place);
        if (now.empty()) expected_.erase(place);
    }

    // --- what the program does ---

    bool showAny() {
        const auto& list = ctx().udtTippListe;
        const auto& tip = list[any(list.size())];
        said_ = std::to_string(tip.Index) + " " + tip.Überschrift;
        return engine().tree().showTipByNumber(tip.Index) && !ctx().frmBVK_Prog.panels.empty();
    }
    std::vector<std::string> choices(std::int16_t i) {
        for (const Panel& panel : ctx().frmBVK_Prog.panels) {
            if (std::find(panel.entries.begin(), panel.entries.end(), i) == panel.entries.end()) continue;
            const TipEntry& e = ctx().aktuellerTipp.Eintrag[static_cast<std::size_t>(i)];
            switch (panel.Ausgabeart) {
                case art::Liste: return e.Wertname.empty() ? std::vector<std::string>{} : std::vector<std::string>{"on", "off"};
                case art::CheckBox: return {"on", "off"};
                case art::ZahlenWerte: return {std::to_string(panel.Min), std::to_string(panel.Max)};
                case art::AuswahlBox: case art::OptionsAuswahl: return panel.selection;
                case art::TextWerte: return e.Datentyp == 4 ? std::vector<std::string>{"1A", "FF", "<delkey>"} : e.Datentyp == 3 ? std::vector<std::string>{"01 02", "0A"} : std::vector<std::string>{"Prüfung", "a#b", "<delkey>"};
                case art::Drive: return {"C:\\Prüfung", "C:\\Andere"};
                case art::Farbe: return {"1 20 255", "0 0 0"};
                case art::BitMaske: return {std::string(panel.schalter.size(), '1'), std::string(panel.schalter.size(), '0')};
                default: return {};
            }
        }
        return {};
    }
    bool fill() {
        if (!showAny()) return false;
        bool some = false;
        for (std::int16_t i = 1; i <= static_cast<std::int16_t>(ctx().aktuellerTipp.lastEntry()); ++i) {
            const auto texts = choices(i);
            if (texts.empty() || any(3) == 0) continue;
            some = engine().setEntryFromText(i, texts[any(texts.size())]).empty() || some;
        }
        return some && engine().DatenRead();
    }
    void saveTip() {
        if (!fill()) return;
        if (!ctx().aktuellerTipp.INITipp && any(2) == 0) return engine().clickRegSave(ctx().frmBVK_Prog.cmdRegSave);   // the window's way
        ctx().aktuellerTipp.INITipp ? engine().SaveINITipp(false) : engine().RegWerteSchreiben();
    }
    void defaultTip() {
        if (showAny() && ctx().frmBVK_Prog.Default && ctx().aktuellerTipp.Eintrag[1].Ausgabeart < art::BootINI) engine().Default_Einstellungen();
    }
    bool showKeys() {
        std::vector<std::int32_t> numbers;
        for (const auto& tip : ctx().udtTippListe)
            if (const auto found = engine().lookUpTip(tip.Index); found && found->lastEntry() >= 1 && found->Eintrag[1].Ausgabeart == art::Kontext) numbers.push_back(tip.Index);
        if (numbers.empty()) return false;
        const std::int32_t number = numbers[any(numbers.size())];
        said_ = std::to_string(number);
        return engine().tree().showTipByNumber(number) && !ctx().frmBVK_Prog.panels.empty();
    }
    void deleteTip() {
        if (any(2) == 0) {
            if (showAny() && ctx().frmBVK_Prog.KeyDel && !ctx().aktuellerTipp.INITipp && !engine().rowsAreKeys(ctx().frmBVK_Prog.panels.front())) engine().RegWerteLoeschen();
            return;
        }
        if (!showKeys() || ctx().frmBVK_Prog.panels.front().lines.empty()) return;
        engine().input().userTick(0, static_cast<int>(any(ctx().frmBVK_Prog.panels.front().lines.size())), true);
        engine().RegWerteLoeschen();
    }
    void contextEntry() {
        if (!showKeys()) return;
        const auto& rows = ctx().frmBVK_Prog.panels.front().lines;
        const bool fresh = rows.empty() || any(2) == 0;
        engine().input().userSelectRow(0, fresh ? -1 : static_cast<int>(any(rows.size())));
        BearbeitenRequest entry = engine().bearbeitenRequest(fresh);
        if (fresh) entry.txtKeyName = "neu" + std::to_string(any(3));
        entry.txtBeschreibung = any(2) == 0 ? "" : "Text" + std::to_string(any(5));
        entry.txtBefehl = "befehl" + std::to_string(any(5)) + ".exe";
        entry.save(entry);
        engine().reloadTip();
    }
    void applySome() {
        std::vector<Change> changes;
        std::set<std::string> places;
        for (int k = 0; k < 3; ++k) {
            if (!fill() || ctx().aktuellerTipp.INITipp) continue;
            std::string refusal;
            Change change = engine().plannedSave(refusal);
            change.onScreen = false;
            std::erase_if(change.values, [&](const ValueChange& value) { return value.alt == value.neu || !places.insert(lowerCase(value.path)).second; });
            if (refusal.empty() && !change.values.empty()) changes.push_back(std::move(change));
        }
        ctx().blnGeaendert = false;
        engine().writeTogether(changes);
    }
    void undo(bool told) {
        told = told && !mounted_;   // that writes to the local machine
        std::vector<JournalHeader> standing;
        for (const JournalHeader& head : lists_->journal().heads())
            if (!isUndo(head) && head.undoneBy == 0 && !head.lineOnly && (!told || head.zeile)) standing.push_back(head);
        if (standing.empty()) return;
        const JournalHeader change = standing[any(standing.size())];
        said_ = "change " + std::to_string(change.nummer);
        port.restore = any(2) == 0;
        UndoAnswer exact = exactly();
        TipValues numbers(ctx());
        const bool done = told ? Undo(ctx(), lists_->journal(), exact, numbers).execute(*change.zeile, change.nummer) : exact.undo(change.nummer);
        EXPECT_TRUE(done || port.last.find("Es wurde nichts geändert, und die Änderung steht weiter") != std::string::npos) << port.last;
        if (done && change.zeile) lists_->history().deleteLine(*change.zeile), lists_->history().HistorySave();
    }
    void redo() {
        port.restore = any(2) == 0;
        if (const std::int64_t nummer = lists_->journal().lastTakenBack(); nummer != 0 && !lists_->journal().head(nummer)->lineOnly) exactly().restore(nummer);
    }
    void restart() {
        if (any(2) == 0) {   // under another name
            const std::string place = "HKEY_LOCAL_MACHINE\\System\\CurrentControlSet\\Control\\ComputerName\\ComputerName\\ComputerName";
            put(place, fromText("PC-" + std::to_string(any(1000)), regtype::Sz));
            const RealKey key = store().realKey(Root::LocalMachine, "System\\CurrentControlSet\\Control\\ComputerName\\ComputerName");
            others("HKEY_LOCAL_MACHINE\\" + key.key + "\\\\ComputerName");
        }
        start();
    }

    // --- what others do ---

    void others(const std::string& place) {
        foreign_.insert(place);
        ours_.erase(place);
    }
    void foreignWrite() {
        if (any(5) == 0) {   // a line that the program set, if there is one in this file, and one of its own
            const char* const name = Files[any(4)];
            const auto file = ctx().target().files().find(name);
            if (!std::filesystem::exists(file)) return;
            std::string bytes = bytesOf(file);
            for (const auto& [id, line] : setState(ctx(), lists_->journal()).lines)
                if (equalText(line.datei, name) && line.wert && any(2) == 0) bytes = Replace(bytes, "\n" + line.key + "=" + *line.wert, "\n" + line.key + "=fremd");
            writeFileAtomic(file, bytes + "\r\n[fremd]\r\nn" + std::to_string(any(100)) + "=1\r\n");
            others(name);
            return compareDrift();
        }
        std::vector<std::pair<RegAddress, std::string>> values;   // what the program set, and wants to find
        for (const auto& [id, value] : setState(ctx(), lists_->journal()).values) values.emplace_back(value.address, id);
        if (values.empty()) return;
        const RegAddress& place = values[any(values.size())].first;
        const State before = state();
        if (any(3) == 0) store().deleteValue(place.root, place.key, *place.name);
        else store().setValue(place.root, place.key, *place.name, fromText("fremd" + std::to_string(any(10)), regtype::Sz));
        const State after = state();
        for (const auto& [name, now] : after)
            if (const auto was = before.find(name); was == before.end() || was->second != now) others(name);
        for (const auto& [name, was] : before)
            if (!after.contains(name)) others(name);
        compareDrift();
    }

    // --- comparing ---

    static std::string placeOf(const RegAddress& address) { return address.keyPath() + "\\\\" + address.name->text(); }

    // Names in the records are spelt as they were given, those of the store as they were made.
    static State folded(const State& state) {
        State all;
        for (const auto& [place, content] : state) all[lowerCase(place)] = content;
        return all;
    }
    void compareDrift() {
        const State now = folded(state()), expected = folded(expected_);
        const SetState set = setState(ctx(), lists_->journal());
        std::size_t differing = 0, reported = 0;
        for (const auto& [id, value] : set.values) {
            const std::string place = lowerCase(placeOf(value.address));
            EXPECT_EQ(value.wert ? shownRaw(value.wert) + bytesText(value.wert->bytes) : std::string(), at(expected, place)) << said_ << ": " << place;
            differing += at(now, place) != at(expected, place) ? 1 : 0;
        }
        for (const auto& [id, line] : set.lines) {
            const std::string place = id.substr(id.find('\n') + 1), file = place.substr(0, place.find('\n'));
            EXPECT_EQ(line.wert ? "=" + *line.wert : std::string(), at(expectedLines_, place)) << said_ << ": " << place;
            differing += at(linesOf(at(now, file)), place.substr(file.size() + 1)) != at(expectedLines_, place) ? 1 : 0;
        }
        for (const DriftEntry& entry : drift(ctx(), lists_->journal())) {
            EXPECT_NE(entry.state, DriftState::Unreadable) << entry.why;
            reported += entry.state == DriftState::Differs ? 1 : 0;
        }
        EXPECT_EQ(reported, differing) << said_;
    }

    // The place itself, or a key that is there for it.
    bool around(const std::set<std::string>& places, const std::string& place) const {
        const std::string wanted = lowerCase(place);
        return std::any_of(places.begin(), places.end(), [&](const std::string& other) {
            const std::string known = lowerCase(other);
            return known == wanted || (wanted.ends_with('\\') && known.starts_with(wanted)) || (known.ends_with('\\') && wanted.starts_with(known));
        });
    }
    bool touchedByOthers(const std::string& place) const { return around(foreign_, place); }
    // Conflicts name places as the user sees them.
    std::string real(const std::string& shown) {
        if (shown.starts_with("C:\\")) return shown;
        const std::string own = "HKEY_CURRENT_USER\\";
        return lowerCase(shown.starts_with(own) ? "HKEY_USERS\\" + ctx().strEigeneSID + "\\" + shown.substr(own.size()) : shown);
    }
    bool namedIn(const std::set<std::string>& rows, const std::string& place) {
        const std::string wanted = lowerCase(Replace(place, "\\\\", "\\"));
        return std::any_of(rows.begin(), rows.end(), [&](const std::string& row) {
            const std::string known = lowerCase(real(row));
            return wanted == known || wanted.starts_with(known + "\\") || (wanted.ends_with('\\') && known.starts_with(wanted));
        });
    }
    bool named(const std::string& place) { return namedIn(port.overwritten, place); }
    bool keptByWish(const std::string& place) { return namedIn(port.kept, place); }
    bool touchedAround(const std::string& row) {
        const std::string wanted = real(row);
        return std::any_of(foreign_.begin(), foreign_.end(), [&](const std::string& place) {
            const std::string known = lowerCase(Replace(place, "\\\\", "\\"));
            return known == lowerCase(wanted) || known.starts_with(lowerCase(wanted) + "\\");
        });
    }

    std::mt19937 random_;
    bool mounted_;
    TempDir dir_;
    TestPlatform platform_;
    WindowObserver observer_;
    std::unique_ptr<Recorders> recorders_;
    std::unique_ptr<Program> program_;
    std::unique_ptr<Listen> lists_;
    State first_, expected_, expectedLines_; // expected_: as the program left it last; lines by "file\nsection\nkey\nn"
    std::set<std::string> ours_, foreign_;   // who wrote a place last; what others ever wrote
    std::string said_;
};

// More and others by hand: SEQUENCES_FIRST=100 SEQUENCES=50.
unsigned fromEnvironment(const char* name, unsigned otherwise) {
    const char* const text = std::getenv(name);
    return text == nullptr ? otherwise : static_cast<unsigned>(std::atoi(text));
}

TEST(Sequences, EverythingGoesBackAndDriftTellsTheTruth) {
    const unsigned FirstSeed = fromEnvironment("SEQUENCES_FIRST", 1), Seeds = fromEnvironment("SEQUENCES", 5);
    for (unsigned seed = FirstSeed; seed < FirstSeed + Seeds; ++seed) {
        SCOPED_TRACE("seed " + std::to_string(seed));
        World world(seed, seed % 2 == 0);
        for (int k = 0; k < 40 && !::testing::Test::HasFailure(); ++k) {
            SCOPED_TRACE("step " + std::to_string(k));
            world.step();
        }
        world.takeAllBack();
        if (::testing::Test::HasFailure()) return;
    }
}

}  // namespace
}  // namespace brenvik::test
