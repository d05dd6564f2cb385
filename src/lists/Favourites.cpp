#include "lists/Favourites.h"

#include <algorithm>
#include <limits>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"
#include "lists/ListFolders.h"
#include "lists/Messages.h"

namespace brenvik {
namespace {

constexpr int TextThere = 121, TextNone = 122, TextDelete1 = 123, TextDelete2 = 118;

std::filesystem::path listFile(const Context& ctx) { return userPath(ctx, withSeparator(ctx.einstellungen.strFavoritenPfad) + FavouritesFile); }

// Trimmed, and without the empty ones.
std::vector<std::string> items(const std::vector<std::string>& lines) {
    std::vector<std::string> found;
    for (const std::string& line : lines)
        if (std::string item = Trim(line); !item.empty()) found.push_back(std::move(item));
    return found;
}

bool removeOne(std::vector<std::string>& list, const std::string& item) {
    const auto found = std::find(list.begin(), list.end(), item);
    if (found == list.end()) return false;
    list.erase(found);
    return true;
}

}  // namespace

std::string Favoriten::chosenText() const {
    return ListIndex_ >= 0 && ListIndex_ < static_cast<int>(strFavoriten_.size()) ? strFavoriten_[static_cast<std::size_t>(ListIndex_)] : std::string();
}

bool Favoriten::LoadFavorite() {
    return load([&] {
        ListFile file(listFile(ctx_));
        std::vector<std::string> loaded = items(file.read());
        std::erase_if(loaded, [&](const std::string& item) { return deleted_.contains(item); });
        strFavoriten_ = std::move(loaded);
        datei_ = std::move(file);
    });
}

bool Favoriten::unite() {
    return load([&] { preparedFile(); });
}

bool Favoriten::load(const std::function<void()>& readTable) {
    blnFavoritenLaedt_ = false;
    const bool read = reportAndGoOn(ctx_, "LoadFavorite", [&] {
        readTable();
        ListIndex_ = strFavoriten_.empty() ? -1 : 0;
        ClearFavoritenMenu();
        if (!strFavoriten_.empty()) FillFavoritenMenu();
    });
    blnFavoritenLaedt_ = true;
    changed();
    return read;
}

void Favoriten::FillFavoritenMenu() {
    reportAndGoOn(ctx_, "FillFavoritenMenu", [&] {
        intFavMenuErster_ = 1;
        const std::size_t most = std::numeric_limits<std::int16_t>::max();   // a menu counts no further
        for (std::size_t k = 0; k < strFavoriten_.size() && k < most; ++k) mnuFavPopA_.push_back(strFavoriten_[k]);
        intFavMenuLetzter_ = static_cast<std::int16_t>(mnuFavPopA_.size() - 1);
    });
}

void Favoriten::ClearFavoritenMenu() {
    mnuFavPopA_.resize(1);
    intFavMenuErster_ = intFavMenuLetzter_ = 0;
}

void Favoriten::showNodeOf(const std::string& text) {
    reportAndGoOn(ctx_, "FavAuswahlAnzeigen", [&] {
        const auto& tree = ctx_.frmBVK_Prog.tvBVKDB;
        const auto found = std::find_if(tree.begin(), tree.end(), [&](const TreeNode& node) { return node.text == text; });
        if (found != tree.end()) engine_.tree().showNode(static_cast<int>(found - tree.begin()));
        else engine_.tree().TreeViewAbfrage(false);   // on the old selection
    });
}

void Favoriten::FavAuswahlAnzeigen() { showNodeOf(chosenText()); }

void Favoriten::choose(int item) {
    ctx_.click();
    ListIndex_ = item;
    if (blnFavoritenLaedt_ && item >= 0) FavAuswahlAnzeigen();
}

void Favoriten::clickMenu(int index) {
    ctx_.click();
    if (index < intFavMenuErster_ || index > intFavMenuLetzter_ || index < 1) return ctx_.port.tell(messages::FavUnknown);
    showNodeOf(mnuFavPopA_[static_cast<std::size_t>(index)]);
}

// The file with what other programs did to it joined in; another file if the folder was changed.
ListFile& Favoriten::preparedFile() {
    const auto path = listFile(ctx_);
    const bool same = datei_ && datei_->file() == path;
    ListFile file = same ? *datei_ : ListFile(path);
    ListDifference foreign = same ? file.foreignChanges() : ListDifference{file.read(), {}};
    for (const std::string& item : items(foreign.weg)) removeOne(strFavoriten_, item);
    for (const std::string& item : items(foreign.dazu))
        if (!deleted_.contains(item) && std::find(strFavoriten_.begin(), strFavoriten_.end(), item) == strFavoriten_.end()) strFavoriten_.push_back(item);
    datei_ = std::move(file);
    return *datei_;
}

void Favoriten::writeItems(const char* between, const char* last) {
    std::string text;
    for (std::size_t k = 0; k < strFavoriten_.size(); ++k) text += strFavoriten_[k] + (k + 1 < strFavoriten_.size() ? between : last);
    datei_->writeText(text);
}

void Favoriten::FavAdd() {
    blnFavoritenLaedt_ = false;
    const auto& tree = ctx_.frmBVK_Prog.tvBVKDB;
    if (tree.empty()) return;
    const std::string text = Trim(tree.at(static_cast<std::size_t>(ctx_.frmBVK_Prog.selectedNode)).text);
    if (std::find(strFavoriten_.begin(), strFavoriten_.end(), text) != strFavoriten_.end()) return ctx_.port.tell(strBVKTexte(TextThere));
    const std::vector<std::string> before = strFavoriten_;
    try {
        ListFile& file = preparedFile();
        if (file.afterReading(text) != text) throw NumberedError(errnum::InvalidCall, messages::FavNoAnsi);
        if (std::find(strFavoriten_.begin(), strFavoriten_.end(), text) == strFavoriten_.end()) strFavoriten_.push_back(text);
        deleted_.erase(text);
        writeItems("\r\n\r", "\r\n");
    } catch (const std::exception& error) {
        strFavoriten_ = before;
        ctx_.port.tell(messages::FavSave + std::string("\r\n\r\n") + error.what(), box::Exclamation);
        blnFavoritenLaedt_ = true;
        return;
    }
    SortFileLines();
    LoadFavorite();
}

void Favoriten::FavDel() {
    blnFavoritenLaedt_ = false;
    if (strFavoriten_.empty()) return ctx_.port.tell(strBVKTexte(TextNone));
    const std::string text = chosenText();
    if (!ctx_.port.ask(strBVKTexte(TextDelete1) + text + strBVKTexte(TextDelete2))) return void(unite());
    reportAndGoOn(ctx_, "FavDel", [&] {
        preparedFile();
        removeOne(strFavoriten_, text);
        deleted_.insert(text);
        writeItems("\r\n\r", "\r\n");
        SortFileLines();
    });
    LoadFavorite();
}

void Favoriten::SortFileLines() {
    reportAndGoOn(ctx_, "SortFileLines", [&] {
        ListFile& file = preparedFile();
        std::vector<std::string> lines = items(file.read());
        lines.insert(lines.begin(), std::string());   // entries count from 1
        if (lines.size() - 1 > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max()))
            std::stable_sort(lines.begin() + 1, lines.end(), [](const std::string& a, const std::string& b) { return compareText(a, b) < 0; });
        else
            SelectionSort(ctx_, lines, 1, static_cast<std::int16_t>(lines.size() - 1));
        file.write({lines.begin() + 1, lines.end()});
    });
}

void Favoriten::manage() {
    FavVerwaltenRequest window;
    window.lvFav = strFavoriten_;
    window.loeschen = [&](std::size_t row) {
        ctx_.click();
        if (row >= window.lvFav.size() || !ctx_.port.ask(strBVKTexte(TextDelete1) + window.lvFav[row] + strBVKTexte(TextDelete2))) return;
        window.lvFav.erase(window.lvFav.begin() + static_cast<std::ptrdiff_t>(row));
        window.changed = true;
    };
    window.ok = [&] {
        ctx_.click();
        if (!window.changed) return;
        reportAndGoOn(ctx_, "frmBVK_FavVerwalten", [&] {
            const std::vector<std::string> shown = strFavoriten_;
            preparedFile();
            for (const std::string& item : listDifference(shown, window.lvFav).weg)
                if (removeOne(strFavoriten_, item)) deleted_.insert(item);
            writeItems("\r", "");
        });
        LoadFavorite();
    };
    ctx_.port.showWindow(window);
}

}  // namespace brenvik
