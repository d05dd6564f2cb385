#include "tipdb/Limits.h"

#include <fmt/format.h>

#include <algorithm>
#include <string_view>
#include <unordered_map>

#include "tipdb/Messages.h"
#include "tipdb/TipdbContext.h"

namespace brenvik {
namespace {

// A group stands with all of its Tips wherever a row names it, and a number that several Tips share stands for all of them.
std::size_t nodesByGroups(const TipDatabase& database) {
    std::unordered_map<std::int32_t, std::size_t> tips;
    for (const TipListEntry& tip : database.udtTippListe) ++tips[tip.Index];
    std::vector<std::size_t> below;
    for (const Gruppe& group : database.udtGruppen) {
        std::size_t count = 0;
        for (const std::int32_t index : group.Tipps) count += tips[index];
        below.push_back(count);
    }
    std::size_t nodes = 0;
    for (const Treebaum& row : database.udtTreebaum) {
        nodes += 1 + (static_cast<std::size_t>(row.Gruppe) < below.size() ? below[static_cast<std::size_t>(row.Gruppe)] : 0);
        if (nodes > MaxTreeNodes) break;
    }
    return nodes;
}

std::size_t nodesByVersions(const TipDatabase& database) {
    std::unordered_map<std::string_view, std::size_t> tips;
    for (const TipListEntry& tip : database.udtTippListe) ++tips[tip.NeuInVersion];
    std::size_t nodes = 0;
    for (const std::string& version : database.strDBVersionen) {
        nodes += 1 + tips[version];
        if (nodes > MaxTreeNodes) break;
    }
    return nodes;
}

std::size_t levels(const TipDatabase& database) {
    std::vector<std::size_t> lastAt(database.udtGruppen.size() + 1, 0);   // level of the node that was placed there last
    const auto has = [&](std::int64_t place) { return place >= 0 && place < static_cast<std::int64_t>(lastAt.size()); };
    std::size_t deepest = 0;
    for (const Treebaum& row : database.udtTreebaum) {
        if (!has(row.Vorgänger - 1) || !has(row.Ebene)) continue;
        const std::size_t own = lastAt[static_cast<std::size_t>(row.Vorgänger - 1)] + 1;
        lastAt[static_cast<std::size_t>(row.Ebene)] = own;
        deepest = std::max(deepest, own);
    }
    return deepest;
}

}  // namespace

DatabaseErrors tooBig(const std::string& what, std::size_t most) {
    return {dberr::Unspecified, fmt::format(messages::DatabaseTooLarge, what, most), "Datenbankdatei"};
}

void checkTreeSize(const TipDatabase& database) {
    const std::size_t nodes = std::max({nodesByGroups(database), nodesByVersions(database), database.udtTippListe.size()});
    if (nodes > MaxTreeNodes) throw tooBig(messages::TreeEntries, MaxTreeNodes);
    if (const std::size_t found = levels(database); found > MaxTreeLevels) throw tooBig(fmt::format(messages::TreeLevels, found), MaxTreeLevels);
}

}  // namespace brenvik
