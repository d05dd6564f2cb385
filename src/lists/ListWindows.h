#pragma once
// What the windows of history and favourites show, and what they do: the window draws the record anew after each call.
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "frame/UserPort.h"

namespace brenvik {

struct HistoryListeRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_HistoryListe"; }
    struct Zeile {
        std::string datum, timeOfDay, rechnername, überschrift;
    };
    // A row stands for a line of History.txt by its Nummer, or for a change without a line by its number in the journal.
    struct Tag {
        std::int32_t Nummer = 0;
        std::int64_t journal = 0;
    };
    std::vector<Tag> lines;
    std::function<Zeile(std::size_t)> zeile;          // made when it is shown: there may be very many
    bool commandsActive = false;                        // cmdHisAnzeigen, cmdHisDel, cmdHisAllDel
    bool redoPossible = false;                        // cmdHisRedo
    bool blnListeGeaendert = false;
    std::string hint;                              // what was put right at the start; empty: nothing
    std::function<void(std::size_t)> show, loeschen, forget;
    std::function<void()> deleteAll, restore, back;
};

struct HistoryDatenRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_HistoryDaten"; }
    struct Zeile {
        std::string wertname, formerValue, presentValue;
        std::string pfad;                             // in full, of the selected row
    };
    std::vector<Zeile> lines;
    std::string hint;                              // empty: none
    bool undoPossible = false;                        // cmdDatenUndo
    bool exactPossible = false;                       // cmdDatenGenau
    std::function<bool()> undo, undoExactly;   // true: done, the window closes
    std::function<void()> back;
};

// What a change made was changed again since: what of it is to go back too. Nothing is preset.
struct UndoConflictsRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_UndoConflicts"; }
    struct Row {
        std::string place, before, after, now;
        std::string by;                               // who changed it since
        bool restore = false;
    };
    std::vector<Row> rows;
    bool proceed = false;                             // false: nothing is done at all
};

struct FavVerwaltenRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_FavVerwalten"; }
    std::vector<std::string> lvFav;
    bool changed = false;
    std::function<void(std::size_t)> loeschen;        // takes the row out if the user agrees
    std::function<void()> ok;
};

}  // namespace brenvik
