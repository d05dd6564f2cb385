#pragma once
// The main window's own settings: place, splitters and bands. All values are REG_SZ below Einstellungen; measures are
// twips. A value that is no sensible measure counts as missing.
#include <array>
#include <string>

#include "registry/RegistryContext.h"

namespace brenvik {

struct BandEinstellung {
    bool Visible = true;
    double Width = 0, MinWidth = 0, MinHeight = 0;
    bool NewRow = false;
};

struct FensterEinstellungen {
    double MainLeft = 1000, MainTop = 1000, MainWidth = 9000, MainHeight = 9100;
    bool MainMaximiert = false;     // the measures are then those that the window comes back to
    double SplitterVLeft = 3350, SplitterHTop = 6000;
    std::array<BandEinstellung, 4> Band{BandEinstellung{true, 4005, 2505, 330, false}, BandEinstellung{true, 2205, 2205, 330, false},
                                        BandEinstellung{true, 5550, 3000, 375, true}, BandEinstellung{true, 900, 900, 330, false}};
    // The user's arrangement of the buttons, as ButtonOrder.h has it; empty: as they come.
    std::array<std::string, 3> Knoepfe;
    static constexpr std::array<const char*, 3> KnopfLeisten{"tbrBVKNav", "tbrFavoriten", "tbrFiles"};
};

FensterEinstellungen loadWindowSettings(RegistryContext& ctx);
FensterEinstellungen loadWindowPlace(RegistryContext& ctx);     // MainLeft to MainHeight only
bool saveWindowSettings(RegistryContext& ctx, const FensterEinstellungen& window);      // false: the registry takes nothing at all

// The whole of Save_BVKEinstellungen: the window's settings and the core's.
void Save_BVKEinstellungen(RegistryContext& ctx, const FensterEinstellungen& window);

}  // namespace brenvik
