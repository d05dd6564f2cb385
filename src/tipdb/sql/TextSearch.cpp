// Single texts of the database by column and row number.
#include "frame/Reports.h"
#include "tipdb/LoadDB.h"

namespace brenvik {

namespace {

std::string searchText(TipdbContext& ctx, spalte::Spalte column, std::int32_t index) {
    if (!ctx.objRS) throw NumberedError(91, "Es ist keine Datenbank geladen.");
    RecordSet& rs = *ctx.objRS;
    rs.MoveFirst();
    rs.moveToNumber(spalte::Index, index);
    if (column == spalte::Schlüssel) {
        if (ctx.istNT() && !rs.isNullOrEmpty(spalte::SchlüsselNT)) return rs.text(spalte::SchlüsselNT);
        return rs.textOrEmpty(spalte::Schlüssel);
    }
    const auto target = rs.numberOrZero<std::int32_t>(spalte::Verweis);
    if (target == 0 || !rs.isNullOrEmpty(column)) return rs.textOrEmpty(column);
    rs.MoveFirst();
    rs.moveToNumber(spalte::Index, target);
    return rs.textOrEmpty(column);
}

}  // namespace

std::string DBTextSuchen(TipdbContext& ctx, spalte::Spalte Spalte, std::int32_t Index) {
    std::string found;
    reportAndGoOn(ctx, "DBTextSuchen", [&] { found = searchText(ctx, Spalte, Index); });
    return found;
}

}  // namespace brenvik
