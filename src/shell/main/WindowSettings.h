#pragma once
// The main window's own settings: place, splitters and bands. All values are REG_SZ below Einstellungen; measures are
// twips. A value that is no sensible measure counts as missing.
#include <array>
#include <string>

#include "registry/RegistryContext.h"

namespace brenvik {

struct BandSetting {
    bool Visible = true;
    double Width = 0, MinWidth = 0, MinHeight = 0;
    bool NewRow = false;
};

struct MainWindowSettings {
    double MainLeft = 1000, MainTop = 1000, MainWidth = 9000, MainHeight = 9100;
    bool MainMaximised = false;     // the measures are then those that the window comes back to
    double SplitterVLeft = 3350, SplitterHTop = 6000;
    std::array<BandSetting, 4> Band{BandSetting{true, 4005, 2505, 330, false}, BandSetting{true, 2205, 2205, 330, false},
                                        BandSetting{true, 5550, 3000, 375, true}, BandSetting{true, 900, 900, 330, false}};
    // The user's arrangement of the buttons, as ButtonOrder.h has it; empty: as they come.
    std::array<std::string, 3> Buttons;
    static constexpr std::array<const char*, 3> ButtonBars{"tbrBVKNav", "tbrFavoriten", "tbrFiles"};
};

MainWindowSettings loadWindowSettings(RegistryContext& ctx);
MainWindowSettings loadWindowPlace(RegistryContext& ctx);     // MainLeft to MainHeight only
bool saveWindowSettings(RegistryContext& ctx, const MainWindowSettings& window);      // false: the registry takes nothing at all

// The whole of Save_BVKEinstellungen: the window's settings and the core's.
void Save_BVKEinstellungen(RegistryContext& ctx, const MainWindowSettings& window);

}  // namespace brenvik
