#pragma once
// Favoriten.txt: remembered Tips by the text of their node, and what combo, menu and window show of them.
#include <cstdint>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "lists/ListFile.h"
#include "lists/ListWindows.h"
#include "tipengine/TipEngine.h"

namespace brenvik {

class Favoriten {
public:
    explicit Favoriten(TipEngine& engine) : engine_(engine), ctx_(engine.context()) {}
    Favoriten(const Favoriten&) = delete;
    Favoriten& operator=(const Favoriten&) = delete;
    void onChange(std::function<void()> changed) { changed_ = std::move(changed); }   // table, menu or choice are others

    const std::vector<std::string>& strFavoriten() const { return strFavoriten_; }     // the items of cboFavoriten too
    int chosen() const { return ListIndex_; }                                          // -1: none
    const std::vector<std::string>& mnuFavPopA() const { return mnuFavPopA_; }         // [0] is the element that is always there

    bool LoadFavorite();                     // false, with the reason told: the list is not to be written
    bool unite();                         // the same after the folder was changed: the table is joined with the file
    void FavAdd();
    void FavDel();
    void SortFileLines();
    void FavAuswahlAnzeigen();
    void choose(int item);                   // in cboFavoriten, by the user
    void clickMenu(int index);               // mnuFavPopA(index)
    void manage();                        // frmBVK_FavVerwalten

private:
    bool load(const std::function<void()>& readTable);
    void FillFavoritenMenu();
    void ClearFavoritenMenu();
    void showNodeOf(const std::string& text);
    ListFile& preparedFile();
    void writeItems(const char* between, const char* last);
    std::string chosenText() const;
    void changed() { if (changed_) changed_(); }

    TipEngine& engine_;
    Context& ctx_;
    std::function<void()> changed_;
    std::vector<std::string> strFavoriten_;
    std::vector<std::string> mnuFavPopA_{std::string()};
    std::int16_t intFavMenuErster_ = 0, intFavMenuLetzter_ = 0;
    int ListIndex_ = -1;
    bool blnFavoritenLaedt_ = false;         // choosing in the combo acts
    std::optional<ListFile> datei_;
    std::set<std::string> deleted_;          // in this run: an editor that saves its older text does not bring them back
};

}  // namespace brenvik
