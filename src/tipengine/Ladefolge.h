#pragma once
// The steps of the load sequence that belong to areas above the engine. Each area sets its own before the sequence runs;
// what nobody set is left out.
#include <functional>

namespace brenvik {

struct Ladeschritte {
    std::function<bool()> startPasswort;        // called if the start password is on; false: the program ends without a word
    std::function<void()> LoadFHListe;          // favourites and history
    std::function<void()> listenOrdnerNeu;      // later: their folders were chosen anew in the options, or they are to go on
    std::function<void()> LoadRegBackupListe;   // catalogue of the backups
};

}  // namespace brenvik
