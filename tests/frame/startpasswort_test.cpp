// The start password: what is kept, which answers pass, and what happens to a damaged one.
#include <gtest/gtest.h>

#include "frame/Optionen.h"
#include "frame/Startpasswort.h"
#include "frame/Verschluesselung.h"
#include "support/ScriptedPort.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

namespace brenvik::test {
namespace {

constexpr DateTime Moment{2002, 11, 9, 12, 30, 0};
constexpr const char* Key = "Tw&8!Lm/3Xr6ph";

TEST(Startpasswort, KeptWithItsSalt) {
    Settings s;
    setzeStartPasswort(s, true, "  geHeim ", Moment);
    EXPECT_TRUE(s.blnPasswortAktiv);
    EXPECT_EQ(DecryptText(s.strPasswortSalz, Key), "09.11.200212:30:00");
    EXPECT_EQ(DecryptText(s.strPasswortWert, Key), "GEHEIM09.11.200212:30:00");
    for (const char* right : {"geheim", "GEHEIM", "  Geheim  "}) EXPECT_TRUE(istStartPasswort(s, right)) << right;
    for (const char* wrong : {"", "geheim1", "ge heim", "GEHEIM09.11.200212:30:00"}) EXPECT_FALSE(istStartPasswort(s, wrong)) << wrong;
    setzeStartPasswort(s, true, "", Moment);
    EXPECT_TRUE(istStartPasswort(s, "   "));
    EXPECT_FALSE(istStartPasswort(s, "x"));
    setzeStartPasswort(s, false, "geheim", Moment);
    EXPECT_FALSE(s.blnPasswortAktiv);
    EXPECT_EQ(s.strPasswortWert, "");
}

TEST(Startpasswort, Switch) {
    EXPECT_EQ(passwortSchalterText(true), "hajdmmmj");
    EXPECT_EQ(passwortSchalter("hajdmmmj"), true);
    EXPECT_EQ(passwortSchalter(passwortSchalterText(false)), false);
    for (const char* bad : {"", "hajdmmm", "hajdmmmz", "True", "False", "aaaaaaaa", "HAJDMMMJ"}) EXPECT_EQ(passwortSchalter(bad), std::nullopt) << bad;
}

struct Welt {
    Welt() { ctx.einstellungen.SoundOn = false; ctx.heimPfad = "/heim"; }
    ScriptedPort port;
    TestPlatform platform;
    FrameContext ctx{port, platform};
};

TEST(Startpasswort, QuestionAtTheStart) {
    Welt w;
    EXPECT_TRUE(StartPasswort(w.ctx)) << "off: nothing is asked";
    setzeStartPasswort(w.ctx.einstellungen, true, "geheim", Moment);
    bool pass = true;
    w.port.onWindow("frmBVK_PWAbfrage", [&](WindowRequest& request) {
        auto& question = dynamic_cast<PWAbfrageAnfrage&>(request);
        EXPECT_FALSE(question.pruefen("falsch"));
        EXPECT_TRUE(question.pruefen("Geheim"));
        question.bestanden = pass;
    });
    EXPECT_TRUE(StartPasswort(w.ctx));
    pass = false;
    EXPECT_FALSE(StartPasswort(w.ctx));
    EXPECT_EQ(w.port.windows.size(), 2u);
}

TEST(Startpasswort, ADamagedOneAsksAndNoAnswerIsRight) {
    const std::string good = EncryptText("09.11.200212:30:00", Key), password = EncryptText("GEHEIM09.11.200212:30:00", Key);
    for (const auto& [value, salt] : std::vector<std::pair<std::string, std::string>>{
             {password, good.substr(1)}, {password, "xyz!"}, {password, ""}, {"abc", good}, {"", good}, {"ab", good}, {"", ""}}) {
        Welt w;
        w.ctx.einstellungen.blnPasswortAktiv = true;
        w.ctx.einstellungen.strPasswortWert = value;
        w.ctx.einstellungen.strPasswortSalz = salt;
        w.port.expectBox("Startkennwort ist beschädigt").onWindow("frmBVK_PWAbfrage", [](WindowRequest& request) {
            for (const char* answer : {"", "geheim", "GEHEIM"}) EXPECT_FALSE(dynamic_cast<PWAbfrageAnfrage&>(request).pruefen(answer)) << answer;
        });
        EXPECT_FALSE(StartPasswort(w.ctx)) << value << " " << salt;
        EXPECT_EQ(w.port.windows.size(), 1u);
    }
}

// Letters that the scrambled form lacks would be one and the same.
TEST(Startpasswort, OnlyWhatCanBeKeptIsAPassword) {
    Welt w;
    w.ctx.blnAdmin = true;
    for (const auto& [text, possible] : {std::pair{"пароль", false}, {"geheim日", false}, {"Größe€ÿµ", true}}) {
        OptionenAnfrage o(w.ctx);
        o.chkPasswort = o.passwortGeaendert = true;
        o.txtPW1 = o.txtPW2 = text;
        if (!possible) w.port.expectBox("Das Kennwort enthält Zeichen");
        EXPECT_EQ(o.cmdOptOK(), possible) << text;
        EXPECT_EQ(w.ctx.einstellungen.blnPasswortAktiv, possible) << text;
    }
    EXPECT_TRUE(istStartPasswort(w.ctx.einstellungen, "grösse€ÿµ") == false && istStartPasswort(w.ctx.einstellungen, "größe€Ÿµ"));
    setzeStartPasswort(w.ctx.einstellungen, true, "пароль", Moment);   // as earlier versions kept it
    for (const char* answer : {"пароль", "привет", "??????"}) EXPECT_EQ(istStartPasswort(w.ctx.einstellungen, answer), answer[0] == '?') << answer;
}

TEST(Optionen, OkHandsTheCopiesOver) {
    Welt w;
    w.ctx.einstellungen.strPasswortWert = "ab";
    OptionenAnfrage o(w.ctx);
    o.werte.ShowInfo = false;
    o.werte.LöschenAktiv = true;
    o.werte.strHistoryPfad = "/irgendwo";
    o.werte.strBackupPfad = "C:\\Sicherung\\";
    o.werte.strFavoritenPfad = " ";
    o.txtPW1 = "x";
    EXPECT_TRUE(w.ctx.einstellungen.ShowInfo) << "nothing before OK";
    EXPECT_TRUE(o.cmdOptOK());
    const Settings& s = w.ctx.einstellungen;
    EXPECT_FALSE(s.ShowInfo);
    EXPECT_TRUE(s.LöschenAktiv);
    EXPECT_EQ(s.strHistoryPfad, "/irgendwo");
    EXPECT_EQ(s.strBackupPfad, "C:\\Sicherung");
    EXPECT_EQ(s.strFavoritenPfad, "/heim/") << "emptied: the standard folder";
    EXPECT_EQ(s.strPasswortWert, "ab") << "the password group was not touched";
    w.port.expectFolder(std::nullopt).expectFolder("/tmp/neu").expectFolder("C:\\Neu");
    for (const char* folder : {"/tmp/alt", "/tmp/neu/", "C:\\Neu\\"}) EXPECT_EQ(o.PfadChange("/tmp/alt"), folder);   // the first choice is cancelled
}

TEST(Optionen, PasswordNeedsRightsAndItsConfirmation) {
    Welt w;
    OptionenAnfrage o(w.ctx);
    o.chkPasswort = o.passwortGeaendert = true;
    o.txtPW1 = "Geheim";
    o.txtPW2 = "geheim";
    EXPECT_TRUE(o.cmdOptOK()) << "without rights nothing is compared";
    EXPECT_FALSE(w.ctx.einstellungen.blnPasswortAktiv);
    w.ctx.blnAdmin = true;
    o.werte.SoundOn = true;
    w.port.expectBox("Sie haben zwei unterschiedliche Passwörter eingegeben");
    EXPECT_FALSE(o.cmdOptOK());
    EXPECT_EQ(w.port.boxes.back().flags, box::Critical);
    EXPECT_TRUE(w.ctx.einstellungen.SoundOn) << "what was copied before stays";
    EXPECT_FALSE(w.ctx.einstellungen.blnPasswortAktiv);
    o.txtPW2 = "Geheim";
    EXPECT_TRUE(o.cmdOptOK());
    EXPECT_TRUE(istStartPasswort(w.ctx.einstellungen, "geheim"));
    o.chkPasswort = false;
    o.txtPW2 = "egal";
    EXPECT_TRUE(o.cmdOptOK());
    EXPECT_FALSE(w.ctx.einstellungen.blnPasswortAktiv);
}

TEST(Optionen, HelpFileIsLookedForAndTheOldOneKept) {
    Welt w;
    TempDir dir;
    dir.put("alt/ostrana.hlp", "");
    dir.put("neu/ostrana.chm", "");
    OptionenAnfrage o(w.ctx);
    o.werte.strOstranaPfad = (dir / "alt/").string();
    w.port.expectFolder(std::nullopt);
    EXPECT_FALSE(o.waehleHilfedatei("ostrana.chm"));
    w.port.expectFolder((dir / "alt").string()).expectBox("Hilfedatei wurde nicht gefunden, Einstellungen wurden zurückgesetzt.");
    EXPECT_FALSE(o.waehleHilfedatei("ostrana.chm"));
    EXPECT_EQ(o.werte.Ostrana_Name, "ostrana.hlp");
    EXPECT_EQ(o.werte.strOstranaPfad, (dir / "alt/").string());
    w.port.expectFolder((dir / "neu").string());
    EXPECT_TRUE(o.waehleHilfedatei("ostrana.chm"));
    EXPECT_EQ(o.werte.Ostrana_Name, "ostrana.chm");
    EXPECT_EQ(o.werte.strOstranaPfad, (dir / "neu/").string());
    EXPECT_TRUE(o.waehleHilfedatei("ostrana.chm"));
    EXPECT_EQ(w.port.folderChoices.at(0).first, "Hilfedatei wurde im aktuellen Pfad nicht gefunden, bitte neues Verzeichnis auswählen...");
}

}  // namespace
}  // namespace brenvik::test
