#include "tipdb/TipSearch.h"

#include "frame/Reports.h"
#include "tipdb/TipdbContext.h"

namespace brenvik {
namespace {

constexpr const char* Columns[] = {"Wertname", "Überschrift", "Beschreibung"};
enum Field : int { Index = 0, Überschrift = 1, HauptIndex = 4 };

}  // namespace

std::string searchCondition(const SearchOrder& searchOrder) {
    if (searchOrder.txtSuchText.empty()) return {};
    const std::string comparison = searchOrder.exactWording ? "= '" + searchOrder.txtSuchText + "'" : "Like '%" + searchOrder.txtSuchText + "%'";
    std::string condition;
    for (std::size_t i = 0; i < searchOrder.chkTabelle.size(); ++i) {
        if (!searchOrder.chkTabelle[i]) continue;
        condition += (condition.empty() ? "" : " or ") + (std::string(Columns[i]) + " ") + comparison;
    }
    return condition;
}

bool DBSuchen(TipdbContext& ctx, const std::string& Bedingung, std::vector<SearchHit>& Liste) {
    Liste.clear();
    if (Bedingung.empty()) return true;
    bool answered = false;
    const bool read = reportAndGoOn(ctx, "DBSuchen", [&] {
        const auto rs = ctx.objDB.GetNewRS(ctx, ctx.objVerbindung.get(),
                                           "Select Index, Überschrift, Beschreibung, Wertname, HauptIndex From RegDaten where " + Bedingung + " order by 1");
        answered = rs->State() == RecordSet::IsOpen;
        if (!answered || rs->atEOF()) return;
        for (rs->MoveFirst(); !rs->atEOF(); rs->MoveNext())
            if (rs->numberOrZero<std::int32_t>(HauptIndex) == 0) Liste.push_back({rs->number<std::int32_t>(Index), rs->textOrEmpty(Überschrift)});
        ctx.objDB.RSClose(rs.get());
    });
    if (!read) Liste.clear();
    return read && answered;
}

}  // namespace brenvik
