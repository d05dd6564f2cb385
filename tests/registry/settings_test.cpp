// The start password between the registry and the settings.
#include <gtest/gtest.h>

#include "RegistryWorld.h"
#include "frame/program/StartPassword.h"
#include "registry/Settings.h"

namespace brenvik::test {
namespace {

constexpr DateTime Moment{2002, 11, 9, 12, 30, 0};

struct Welt : RegistryWorld {
    std::string stored(const char* name) { return ReadRegistryKey(ctx, std::string(MaschinenEinstellungenPfad) + name, "-"); }
};

TEST(StartpasswortEinstellungen, NeedAdministrativeRightsToBeSaved) {
    Welt w;
    setzeStartPasswort(w.ctx.einstellungen, true, "geheim", Moment);
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

TEST(StartpasswortEinstellungen, AMissingOrDamagedSwitchMeansOff) {
    for (const char* bad : {"", "hajdmmm", "False", "zzzz", "aaaaaaaa"}) {
        Welt w;
        if (*bad) SaveRegistryKey(w.ctx, std::string(MaschinenEinstellungenPfad) + "BVKOPT1", bad, 1);
        w.ctx.einstellungen.blnPasswortAktiv = true;
        loadCoreSettings(w.ctx);
        EXPECT_FALSE(w.ctx.einstellungen.blnPasswortAktiv) << bad;
        EXPECT_EQ(bytesOf(w.dir / "brenvik.log").find("BVKOPT1 ist unbrauchbar") != std::string::npos, *bad != '\0') << bad;
        // What stands there stays until there is a password again.
        w.ctx.blnAdmin = true;
        saveCoreSettings(w.ctx);
        EXPECT_EQ(w.stored("BVKOPT1"), *bad ? bad : passwortSchalterText(false)) << bad;
        setzeStartPasswort(w.ctx.einstellungen, true, "geheim", Moment);
        saveCoreSettings(w.ctx);
        EXPECT_EQ(w.stored("BVKOPT1"), passwortSchalterText(true)) << bad;
    }
}

// --- folders ---

struct Ordner {
    std::string ostrana, favourites, history, backup;
    bool operator==(const Ordner&) const = default;
};

void PrintTo(const Ordner& o, std::ostream* out) { *out << o.ostrana << " | " << o.favourites << " | " << o.history << " | " << o.backup; }

// A registry in a home, as it is when the settings are loaded.
struct Heim : Welt {
    Heim(const std::filesystem::path& home, const std::filesystem::path& program) { ctx.heimPfad = home, ctx.programmPfad = program; }
    Ordner loaded() {
        loadCoreSettings(ctx);
        const Settings& s = ctx.einstellungen;
        return {s.strOstranaPfad, s.strFavoritenPfad, s.strHistoryPfad, s.strBackupPfad};
    }
    void put(const char* name, const std::string& text) { SaveRegistryKey(ctx, std::string(PfadePfad) + name, text, 1); }
    std::string get(const char* name) { return ReadRegistryKey(ctx, std::string(PfadePfad) + name, "-"); }
    // The same registry elsewhere.
    void take(Heim& other) {
        for (const char* name : {"Ostrana", "Favorite", "History", "RegBackupRestore", "Heim", "Programm"})
            if (const std::string text = other.get(name); text != "-") put(name, text);
    }
};

TEST(Ordnereinstellungen, ACopiedOrMovedHomeWorksOnItsOwn) {
    TempDir dir;
    Heim first(dir / "a", dir / "p1");
    EXPECT_EQ(first.loaded(), (Ordner{(dir / "p1/").string(), (dir / "a/").string(), (dir / "a/").string(), (dir / "a/Backup").string()}));
    first.ctx.einstellungen.strHistoryPfad = "/netz/Listen/";
    first.ctx.einstellungen.strBackupPfad = (dir / "a/Sicherung").string();
    saveCoreSettings(first.ctx);
    EXPECT_EQ(first.get("Favorite"), (dir / "a/").string()) << "told as ever: the folder with its separator";
    EXPECT_EQ(first.get("RegBackupRestore"), (dir / "a/Sicherung").string());
    for (const char* there : {"b", "a und mehr"}) {
        Heim copy(dir / there, dir / "p2");
        copy.take(first);
        const std::string home = (dir / there).string();
        const Ordner own{(dir / "p2/").string(), home + "/", "/netz/Listen/", home + "/Sicherung"};   // chosen: as chosen, or along with the home
        EXPECT_EQ(copy.loaded(), own);
        saveCoreSettings(copy.ctx);
        EXPECT_EQ(copy.loaded(), own);
        Heim again(dir / "c", dir / "p2");
        again.take(copy);
        EXPECT_EQ(again.loaded().favourites, (dir / "c/").string());
    }
}

// Homes whose settings do not tell yet where they were saved.
TEST(Ordnereinstellungen, EarlierHomesAreHealedWhereThatCanBeTold) {
    TempDir dir;
    dir.put("lebt/registry.db", "");
    dir.put("ordner/x", "");
    dir.put("programm/RegDaten.mdb", "");
    const auto in = [&](const char* folder) { return (dir / folder).string(); };
    const std::string own = in("heim"), program = in("neu");
    const Ordner standard{program + "/", own + "/", own + "/", own + "/Backup"};
    const struct {
        const char* what;
        Ordner stored, loaded;
    } cases[] = {
        {"emptied", {"", " ", "", ""}, standard},
        {"of a home that is there still", {in("programm") + "/", in("lebt") + "/", in("lebt") + "/", in("lebt") + "/Backup"}, standard},
        {"of a home that is gone", {program + "/", in("fort") + "/", in("fort") + "/", in("fort") + "/Backup"}, standard},
        {"gone, and one folder chosen", {program + "/", "C:\\Listen\\", in("fort") + "/", in("fort") + "/Backup"}, {program + "/", "C:\\Listen\\", own + "/", own + "/Backup"}},
        {"chosen, and gone", {in("weg") + "/", in("stick") + "/", in("stick") + "/", "/andere/Backup"}, {in("weg") + "/", in("stick") + "/", in("stick") + "/", "/andere/Backup"}},
        {"chosen", {in("ordner") + "/", in("ordner") + "/", in("ordner"), in("ordner") + "/Backup"}, {in("ordner") + "/", in("ordner") + "/", in("ordner"), in("ordner") + "/Backup"}},
    };
    for (const auto& c : cases) {
        Heim heim(own, program);
        heim.put("Ostrana", c.stored.ostrana);
        heim.put("Favorite", c.stored.favourites);
        heim.put("History", c.stored.history);
        heim.put("RegBackupRestore", c.stored.backup);
        EXPECT_EQ(heim.loaded(), c.loaded) << c.what;
    }
}

}  // namespace
}  // namespace brenvik::test
