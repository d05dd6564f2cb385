#include "frame/program/StartPassword.h"

#include "frame/Messages.h"
#include "frame/program/Cipher.h"
#include "frame/text/Codepage.h"
#include "frame/text/Conversions.h"

namespace brenvik {
namespace {

constexpr std::string_view SchalterSchluessel = "Qz7w#4k1!", PasswortSchluessel = "Tw&8!Lm/3Xr6ph";

std::optional<std::string> unscrambled(std::string_view text, std::string_view key) {
    try {
        return DecryptText(text, key);
    } catch (const NumberedError&) {
        return std::nullopt;
    }
}

struct Gespeichert {
    std::string password, salt;   // the password with the salt behind it
};

// Nothing if what is stored was not made from a password and its salt.
std::optional<Gespeichert> storedPassword(const Settings& s) {
    const auto salt = unscrambled(s.strPasswortSalz, PasswortSchluessel), password = unscrambled(s.strPasswortWert, PasswortSchluessel);
    if (!salt || salt->empty() || !password || !password->ends_with(*salt)) return std::nullopt;
    return Gespeichert{*password, *salt};
}

std::string plainForm(std::string_view password) { return upperCase(Trim(password)); }

}  // namespace

std::string passwortSchalterText(bool on) { return EncryptText(boolText(on), SchalterSchluessel); }

std::optional<bool> passwortSchalter(std::string_view scrambled) {
    const auto text = unscrambled(scrambled, SchalterSchluessel);
    if (text == boolText(true)) return true;
    if (text == boolText(false)) return false;
    return std::nullopt;
}

bool istMoeglichesKennwort(std::string_view password) { return fitsAnsi(password); }

void setzeStartPasswort(Settings& settings, bool on, std::string_view password, const DateTime& now) {
    const std::string salt = now.dateText() + now.timeText();
    settings.blnPasswortAktiv = on;
    settings.blnPasswortUnklar = false;
    settings.strPasswortWert = EncryptText(on ? plainForm(password) + salt : std::string(), PasswortSchluessel);
    settings.strPasswortSalz = EncryptText(salt, PasswortSchluessel);
}

bool istStartPasswort(const Settings& settings, std::string_view answer) {
    const auto stored = storedPassword(settings);
    // Letters that the scrambled form lacks would all count as the same one.
    return stored && istMoeglichesKennwort(answer) && EncryptText(plainForm(answer) + stored->salt, PasswortSchluessel) == settings.strPasswortWert;
}

bool StartPasswort(FrameContext& ctx) {
    const Settings& s = ctx.einstellungen;
    if (!s.blnPasswortAktiv) return true;
    if (!storedPassword(s)) {
        ctx.trace.write("--- Das gespeicherte Startkennwort ist beschädigt");
        ctx.port.tell(meldung::StartkennwortBeschaedigt, box::Exclamation);
    }
    PWAbfrageAnfrage request;
    request.pruefen = [&s](std::string_view answer) { return istStartPasswort(s, answer); };
    ctx.port.showWindow(request);
    return request.bestanden;
}

}  // namespace brenvik
