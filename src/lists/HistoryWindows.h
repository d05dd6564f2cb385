#pragma once
// What the windows of the history do: the list of changes, the values of one, taking it back.
#include <set>

#include "lists/History.h"
#include "lists/ListWindows.h"
#include "lists/journal/Journal.h"
#include "lists/undo/Undo.h"
#include "tipengine/TipEngine.h"

namespace brenvik {

class HistoryWindows {
public:
    HistoryWindows(TipEngine& engine, Journal& journal, History& history, const std::vector<std::string>& notes, std::function<void()> changed);
    void open();      // frmBVK_HistoryListe, until it closes

private:
    using Tag = HistoryListeRequest::Tag;
    void fill(HistoryListeRequest& list);
    std::vector<Tag> rows();
    HistoryListeRequest::Zeile shown(const Tag& tag);
    std::optional<JournalHeader> quietHead(const std::function<std::int64_t()>& number);
    void show(HistoryListeRequest& list, std::size_t row);
    void loeschen(HistoryListeRequest& list, std::size_t row);
    void deleteAll(HistoryListeRequest& list);
    void restore(HistoryListeRequest& list);
    void forget(HistoryListeRequest& list, std::size_t row);
    void markDeleted(const Tag& tag);
    void removeRow(HistoryListeRequest& list, std::size_t row);
    void listEmptied();
    bool takenBack(HistoryListeRequest& list, std::size_t row, const std::function<bool()>& undo);
    std::int64_t journalOf(const Tag& tag);
    std::vector<HistoryDatenRequest::Zeile> values(const Tag& tag, const std::optional<JournalEntry>& known);
    std::string presentText(const std::string& path);
    std::string presentText(const RegAddress& place);

    TipEngine& engine_;
    Context& ctx_;
    Journal& journal_;
    History& history_;
    const std::vector<std::string>& notes_;
    std::function<void()> changed_;
    TipValues tipValues_;
    UndoAnswer exact_;
    Undo undo_;
    std::set<std::int64_t> toHide_;         // journal rows deleted in the open window
    bool undoTried_ = false;                // the Tip on screen may show what was
};

}  // namespace brenvik
