#include "frame/program/StartPassword.h"

#include "frame/Messages.h"
#include "frame/program/Cipher.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

constexpr std::string_view SwitchKeys = "Qz7w#4k1!", PasswordKey = "Tw&8!Lm/3Xr6ph";

std::optional<std::string> unscrambled(std::string_view text, std::string_view key) {
    try {
        return DecryptText(text, key);
    } catch (const NumberedError&) {
        return std::nullopt;
    }
}

struct Saved {
    std::string password, salt;   // the password with the salt behind it
};

// Nothing if what is stored was not made from a password and its salt.
std::optional<Saved> storedPassword(const Settings& s) {
    const auto salt = unscrambled(s.strPasswortSalz, PasswordKey), password = unscrambled(s.strPasswortWert, PasswordKey);
    if (!salt || salt->empty() || !password || !password->ends_with(*salt)) return std::nullopt;
    return Saved{*password, *salt};
}

std::string plainForm(std::string_view password) { return upperCase(Trim(password)); }

}  // namespace

std::string passwordSwitchText(bool on) { return EncryptText(boolText(on), SwitchKeys); }

std::optional<bool> passwordSwitch(std::string_view scrambled) {
    const auto text = unscrambled(scrambled, SwitchKeys);
    if (text == boolText(true)) return true;
    if (text == boolText(false)) return false;
    return std::nullopt;
}

bool isPossiblePassword(std::string_view password) { return fitsAnsi(password); }

void setStartPassword(Settings& settings, bool on, std::string_view password, const DateTime& now) {
    const std::string salt = now.dateText() + now.timeText();
    settings.blnPasswortAktiv = on;
    settings.blnPasswordUnclear = false;
    settings.strPasswortWert = EncryptText(on ? plainForm(password) + salt : std::string(), PasswordKey);
    settings.strPasswortSalz = EncryptText(salt, PasswordKey);
}

bool isStartPassword(const Settings& settings, std::string_view answer) {
    const auto stored = storedPassword(settings);
    // Letters that the scrambled form lacks would all count as the same one.
    return stored && isPossiblePassword(answer) && EncryptText(plainForm(answer) + stored->salt, PasswordKey) == settings.strPasswortWert;
}

bool StartPassword(FrameContext& ctx) {
    const Settings& s = ctx.einstellungen;
    if (!s.blnPasswortAktiv) return true;
    if (!storedPassword(s)) {
        ctx.trace.write("--- Das gespeicherte Startkennwort ist beschädigt");
        ctx.port.tell(messages::StartPasswordDamaged, box::Exclamation);
    }
    PWAbfrageRequest request;
    request.check = [&s](std::string_view answer) { return isStartPassword(s, answer); };
    ctx.port.showWindow(request);
    return request.passed;
}

}  // namespace brenvik
