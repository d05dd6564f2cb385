// The start password between the registry and the settings.
#include <gtest/gtest.h>

#include "RegistryWorld.h"
#include "frame/program/StartPassword.h"
#include "registry/Settings.h"

namespace brenvik::test {
namespace {

constexpr DateTime Moment{2002, 11, 9, 12, 30, 0};

struct World : RegistryWorld {
    std::string stored(const char* name) { return ReadRegistryKey(ctx, std::string(MachineSettingsPath) + name, "-"); }
};

TEST(StartPasswordSettings, NeedAdministrativeRightsToBeSaved) {
    World w;
    setStartPassword(w.ctx.einstellungen, true, "geheim", Moment);
    const Settings own = w.ctx.einstellungen;
    saveCoreSettings(w.ctx);
    EXPECT_EQ(w.stored("BVKOPT1"), "-");
    w.ctx.blnAdmin = true;
    saveCoreSettings(w.ctx);
    EXPECT_EQ(w.stored("BVKOPT1"), "hajdmmmj");
    w.ctx.einstellungen = {};
    loadCoreSettings(w.ctx);
    EXPECT_TRUE(w.ctx.einstellungen.blnPasswortAktiv);
    EXPECT_EQ(w.ctx.einstellungen.strPasswortWert, own.strPasswortWert);
    EXPECT_EQ(w.ctx.einstellungen.strPasswortSalz, own.strPasswortSalz);
    const std::string log = bytesOf(w.dir / "brenvik.log");
    EXPECT_NE(log.find("BVKOPT2"), std::string::npos);
    EXPECT_EQ(log.find(own.strPasswortWert), std::string::npos) << "whoever gets the log could unscramble it";
}

TEST(StartPasswordSettings, AMissingOrDamagedSwitchMeansOff) {
    for (const char* bad : {"", "hajdmmm", "False", "zzzz", "aaaaaaaa"}) {
        World w;
        if (*bad) SaveRegistryKey(w.ctx, std::string(MachineSettingsPath) + "BVKOPT1", bad, 1);
        w.ctx.einstellungen.blnPasswortAktiv = true;
        loadCoreSettings(w.ctx);
        EXPECT_FALSE(w.ctx.einstellungen.blnPasswortAktiv) << bad;
        EXPECT_EQ(bytesOf(w.dir / "brenvik.log").find("BVKOPT1 ist unbrauchbar") != std::string::npos, *bad != '\0') << bad;
        // What stands there stays until there is a password again.
        w.ctx.blnAdmin = true;
        saveCoreSettings(w.ctx);
        EXPECT_EQ(w.stored("BVKOPT1"), *bad ? bad : passwordSwitchText(false)) << bad;
        setStartPassword(w.ctx.einstellungen, true, "geheim", Moment);
        saveCoreSettings(w.ctx);
        EXPECT_EQ(w.stored("BVKOPT1"), passwordSwitchText(true)) << bad;
    }
}

// --- folders ---

struct Folders {
    std::string ostrana, favourites, history, backup;
    bool operator==(const Folders&) const = default;
};

void PrintTo(const Folders& o, std::ostream* out) { *out << o.ostrana << " | " << o.favourites << " | " << o.history << " | " << o.backup; }

// A registry in a home, as it is when the settings are loaded.
struct Home : World {
    Home(const std::filesystem::path& home, const std::filesystem::path& program) { ctx.homePath = home, ctx.programPath = program; }
    Folders loaded() {
        loadCoreSettings(ctx);
        const Settings& s = ctx.einstellungen;
        return {s.strOstranaPfad, s.strFavoritenPfad, s.strHistoryPfad, s.strBackupPath};
    }
    void put(const char* name, const std::string& text) { SaveRegistryKey(ctx, std::string(PathsPath) + name, text, 1); }
    std::string get(const char* name) { return ReadRegistryKey(ctx, std::string(PathsPath) + name, "-"); }
    // The same registry elsewhere.
    void take(Home& other) {
        for (const char* name : {"Ostrana", "Favorite", "History", "RegBackupRestore", "Heim", "Programm"})
            if (const std::string text = other.get(name); text != "-") put(name, text);
    }
};

TEST(FolderSettings, ACopiedOrMovedHomeWorksOnItsOwn) {
    TempDir dir;
    Home first(dir / "a", dir / "p1");
    EXPECT_EQ(first.loaded(), (Folders{(dir / "p1/").string(), (dir / "a/").string(), (dir / "a/").string(), (dir / "a/Backup").string()}));
    first.ctx.einstellungen.strHistoryPfad = "/netz/Listen/";
    first.ctx.einstellungen.strBackupPath = (dir / "a/Sicherung").string();
    saveCoreSettings(first.ctx);
    EXPECT_EQ(first.get("Favorite"), (dir / "a/").string()) << "told as ever: the folder with its separator";
    EXPECT_EQ(first.get("RegBackupRestore"), (dir / "a/Sicherung").string());
    for (const char* there : {"b", "a und mehr"}) {
        Home copy(dir / there, dir / "p2");
        copy.take(first);
        const std::string home = (dir / there).string();
        const Folders own{(dir / "p2/").string(), home + "/", "/netz/Listen/", home + "/Sicherung"};   // chosen: as chosen, or along with the home
        EXPECT_EQ(copy.loaded(), own);
        saveCoreSettings(copy.ctx);
        EXPECT_EQ(copy.loaded(), own);
        Home again(dir / "c", dir / "p2");
        again.take(copy);
        EXPECT_EQ(again.loaded().favourites, (dir / "c/").string());
    }
}

// Homes whose settings do not tell yet where they were saved.
TEST(FolderSettings, EarlierHomesAreHealedWhereThatCanBeTold) {
    TempDir dir;
    dir.put("lebt/registry.db", "");
    dir.put("ordner/x", "");
    dir.put("programm/RegDaten.mdb", "");
    const auto in = [&](const char* folder) { return (dir / folder).string(); };
    const std::string own = in("heim"), program = in("neu");
    const Folders standard{program + "/", own + "/", own + "/", own + "/Backup"};
    const struct {
        const char* what;
        Folders stored, loaded;
    } cases[] = {
        {"emptied", {"", " ", "", ""}, standard},
        {"of a home that is there still", {in("programm") + "/", in("lebt") + "/", in("lebt") + "/", in("lebt") + "/Backup"}, standard},
        {"of a home that is gone", {program + "/", in("fort") + "/", in("fort") + "/", in("fort") + "/Backup"}, standard},
        {"gone, and one folder chosen", {program + "/", "C:\\Listen\\", in("fort") + "/", in("fort") + "/Backup"}, {program + "/", "C:\\Listen\\", own + "/", own + "/Backup"}},
        {"chosen, and gone", {in("weg") + "/", in("stick") + "/", in("stick") + "/", "/andere/Backup"}, {in("weg") + "/", in("stick") + "/", in("stick") + "/", "/andere/Backup"}},
        {"chosen", {in("ordner") + "/", in("ordner") + "/", in("ordner"), in("ordner") + "/Backup"}, {in("ordner") + "/", in("ordner") + "/", in("ordner"), in("ordner") + "/Backup"}},
    };
    for (const auto& c : cases) {
        Home healed(own, program);
        healed.put("Ostrana", c.stored.ostrana);
        healed.put("Favorite", c.stored.favourites);
        healed.put("History", c.stored.history);
        healed.put("RegBackupRestore", c.stored.backup);
        EXPECT_EQ(healed.loaded(), c.loaded) << c.what;
    }
}

}  // namespace
}  // namespace brenvik::test
