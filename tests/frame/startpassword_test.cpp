// The start password: what is kept, which answers pass, and what happens to a damaged one.
#include <gtest/gtest.h>

#include "frame/program/Cipher.h"
#include "frame/program/Options.h"
#include "frame/program/StartPassword.h"
#include "support/ScriptedPort.h"
#include "support/TestPlatform.h"

namespace brenvik::test {
namespace {

constexpr DateTime Moment{2002, 11, 9, 12, 30, 0};
constexpr const char* Key = "Tw&8!Lm/3Xr6ph";

TEST(PasswordAtTheStart, KeptWithItsSalt) {
    Settings s;
    setStartPassword(s, true, "  geHeim ", Moment);
    EXPECT_TRUE(s.blnPasswortAktiv);
    EXPECT_EQ(DecryptText(s.strPasswortSalz, Key), "09.11.200212:30:00");
    EXPECT_EQ(DecryptText(s.strPasswortWert, Key), "GEHEIM09.11.200212:30:00");
    for (const char* right : {"geheim", "GEHEIM", "  Geheim  "}) EXPECT_TRUE(isStartPassword(s, right)) << right;
    for (const char* wrong : {"", "geheim1", "ge heim", "GEHEIM09.11.200212:30:00"}) EXPECT_FALSE(isStartPassword(s, wrong)) << wrong;
    setStartPassword(s, true, "", Moment);
    EXPECT_TRUE(isStartPassword(s, "   "));
    EXPECT_FALSE(isStartPassword(s, "x"));
    setStartPassword(s, false, "geheim", Moment);
    EXPECT_FALSE(s.blnPasswortAktiv);
    EXPECT_EQ(s.strPasswortWert, "");
}

struct World {
    World() { ctx.einstellungen.SoundOn = false; ctx.homePath = "/heim"; }
    ScriptedPort port;
    TestPlatform platform;
    FrameContext ctx{port, platform};
};

TEST(PasswordAtTheStart, ADamagedOneAsksAndNoAnswerIsRight) {
    const std::string good = EncryptText("09.11.200212:30:00", Key), password = EncryptText("GEHEIM09.11.200212:30:00", Key);
    for (const auto& [value, salt] : std::vector<std::pair<std::string, std::string>>{
             {password, good.substr(1)}, {password, "xyz!"}, {password, ""}, {"abc", good}, {"", good}, {"ab", good}, {"", ""}}) {
        World w;
        w.ctx.einstellungen.blnPasswortAktiv = true;
        w.ctx.einstellungen.strPasswortWert = value;
        w.ctx.einstellungen.strPasswortSalz = salt;
        w.port.expectBox("Startkennwort ist beschädigt").onWindow("frmBVK_PWAbfrage", [](WindowRequest& request) {
            for (const char* answer : {"", "geheim", "GEHEIM"}) EXPECT_FALSE(dynamic_cast<PWAbfrageRequest&>(request).check(answer)) << answer;
        });
        EXPECT_FALSE(StartPassword(w.ctx)) << value << " " << salt;
        EXPECT_EQ(w.port.windows.size(), 1u);
    }
}

// Letters that the scrambled form lacks would be one and the same.
TEST(PasswordAtTheStart, OnlyWhatCanBeKeptIsAPassword) {
    World w;
    w.ctx.blnAdmin = true;
    for (const auto& [text, possible] : {std::pair{"пароль", false}, {"geheim日", false}, {"Größe€ÿµ", true}}) {
        OptionenRequest o(w.ctx);
        o.chkPasswort = o.passwordChanged = true;
        o.txtPW1 = o.txtPW2 = text;
        if (!possible) w.port.expectBox("Das Kennwort enthält Zeichen");
        EXPECT_EQ(o.cmdOptOK(), possible) << text;
        EXPECT_EQ(w.ctx.einstellungen.blnPasswortAktiv, possible) << text;
    }
    EXPECT_TRUE(isStartPassword(w.ctx.einstellungen, "grösse€ÿµ") == false && isStartPassword(w.ctx.einstellungen, "größe€Ÿµ"));
    setStartPassword(w.ctx.einstellungen, true, "пароль", Moment);   // as earlier versions kept it
    for (const char* answer : {"пароль", "привет", "??????"}) EXPECT_EQ(isStartPassword(w.ctx.einstellungen, answer), answer[0] == '?') << answer;
}

}  // namespace
}  // namespace brenvik::test
