#pragma once
// Finding Tips by words in three columns of RegDaten.
#include <array>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "frame/UserPort.h"

namespace brenvik {

struct TipdbContext;

struct SearchOrder {
    std::string txtSuchText;
    std::array<bool, 3> chkTabelle{true, true, true};   // Wertname, Überschrift, Beschreibung
    bool exactWording = false;                       // the whole column, not a part of it
};

struct SearchHit {
    std::int32_t Index = 0;
    std::string Überschrift;
    bool operator==(const SearchHit&) const = default;
};

// The condition of the statement; empty if there is nothing to look for. The text goes in as it was typed.
std::string searchCondition(const SearchOrder& searchOrder);

// The head rows that fit, by their number. False: the statement failed, which was reported; the list is empty.
bool DBSuchen(TipdbContext& ctx, const std::string& Bedingung, std::vector<SearchHit>& Liste);

struct SearchResult {
    enum class Art { NothingToSeek, Failed, Sought } art = Art::NothingToSeek;
    std::vector<SearchHit> hits;
};

struct SuchenRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Suchen"; }
    SearchOrder searchOrder;                                          // as it was left
    std::function<SearchResult(const SearchOrder&)> suchen;
    std::string chosen;                                         // heading of the hit to open, empty: none
};

}  // namespace brenvik
