#pragma once
// The program's own settings: what Load_BVKEinstellungen and Save_BVKEinstellungen move between the registry and the
// program. All values are REG_SZ; measures are twips. A value that is no sensible one counts as missing.
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
    double SplitterVLeft = 3350, SplitterHTop = 6000;
    std::array<BandEinstellung, 4> Band{BandEinstellung{true, 4005, 2505, 330, false}, BandEinstellung{true, 2205, 2205, 330, false},
                                        BandEinstellung{true, 5550, 3000, 375, true}, BandEinstellung{true, 900, 900, 330, false}};
};

// Fills ctx.einstellungen and answers the window's part.
FensterEinstellungen Load_BVKEinstellungen(RegistryContext& ctx);
void Save_BVKEinstellungen(RegistryContext& ctx, const FensterEinstellungen& window);

}  // namespace brenvik
