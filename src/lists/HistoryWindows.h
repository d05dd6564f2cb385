#pragma once
// What the windows of the history do: the list of changes, the values of one, taking it back.
#include <set>

#include "lists/History.h"
#include "lists/ListWindows.h"
#include "lists/journal/Journal.h"
#include "lists/undo/Undo.h"
#include "tipengine/TipEngine.h"

namespace brenvik {

class HistoryFenster {
public:
    HistoryFenster(TippMaschine& engine, Journal& journal, History& history, const std::vector<std::string>& notes, std::function<void()> changed);
    void oeffnen();      // frmBVK_HistoryListe, until it closes

private:
    using Tag = HistoryListeAnfrage::Tag;
    void fill(HistoryListeAnfrage& list);
    std::vector<Tag> rows();
    HistoryListeAnfrage::Zeile shown(const Tag& tag);
    std::optional<JournalKopf> quietHead(const std::function<std::int64_t()>& number);
    void anzeigen(HistoryListeAnfrage& list, std::size_t row);
    void loeschen(HistoryListeAnfrage& list, std::size_t row);
    void allesLoeschen(HistoryListeAnfrage& list);
    void wiederherstellen(HistoryListeAnfrage& list);
    void vergessen(HistoryListeAnfrage& list, std::size_t row);
    void markDeleted(const Tag& tag);
    void removeRow(HistoryListeAnfrage& list, std::size_t row);
    void listEmptied();
    bool takenBack(HistoryListeAnfrage& list, std::size_t row, const std::function<bool()>& undo);
    std::int64_t journalOf(const Tag& tag);
    std::vector<HistoryDatenAnfrage::Zeile> values(const Tag& tag, const std::optional<JournalEintrag>& known);
    std::string presentText(const std::string& path);
    std::string presentText(const RegAddress& place);

    TippMaschine& engine_;
    Context& ctx_;
    Journal& journal_;
    History& history_;
    const std::vector<std::string>& notes_;
    std::function<void()> changed_;
    Tippwerte tippwerte_;
    Ruecknahme exact_;
    Zuruecksetzen undo_;
    std::set<std::int64_t> toHide_;         // journal rows deleted in the open window
    bool undoTried_ = false;                // the Tip on screen may show what was
};

}  // namespace brenvik
