#include "tipengine/tip/TipSystems.h"

#include <algorithm>

#include "frame/text/Texts.h"

namespace brenvik {
namespace {

struct System {
    bool Tipp::*flag;
    std::int16_t intBS;
};

constexpr System Systems[] = {{&Tipp::Win95, 1}, {&Tipp::Win98, 2}, {&Tipp::WinME, 5}, {&Tipp::WinNT, 3}, {&Tipp::Win2000, 4}, {&Tipp::WinXP, 6}};   // as in strBVKBS

}  // namespace

bool isMeantFor(const Tipp& tipp, std::int16_t intBS) {
    return std::any_of(std::begin(Systems), std::end(Systems), [&](const System& system) { return system.intBS == intBS && tipp.*system.flag; });
}

std::vector<std::string> systemsOf(const Tipp& tipp) {
    std::vector<std::string> names;
    for (std::size_t k = 0; k < std::size(Systems); ++k)
        if (tipp.*Systems[k].flag) names.push_back(strBVKBS(static_cast<int>(k)));
    return names;
}

TipEffect effectOf(const Tipp& tipp) {
    constexpr std::uint8_t AsksForLogon = 1, ReloadsDesktop = 2;
    if (tipp.Neustart == ReloadsDesktop) return TipEffect::DesktopReloaded;
    if (tipp.Neustart != AsksForLogon) return TipEffect::AtOnce;
    const bool usersOwn = !tipp.INITipp && tipp.lastEntry() > 0 && std::all_of(tipp.Eintrag.begin() + 1, tipp.Eintrag.end(), [](const TipEntry& entry) {
        return entry.Hauptschlüssel == "HKEY_CURRENT_USER" || entry.Hauptschlüssel == "HKEY_USERS";
    });
    return usersOwn ? TipEffect::NewLogon : TipEffect::LogonOrRestart;
}

}  // namespace brenvik
