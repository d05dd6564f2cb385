#include "tipdb/TipSearch.h"

#include "frame/Reports.h"
#include "tipdb/TipdbContext.h"

namespace brenvik {
namespace {

constexpr const char* Spalten[] = {"Wertname", "Überschrift", "Beschreibung"};
enum Feld : int { Index = 0, Überschrift = 1, HauptIndex = 4 };

}  // namespace

std::string suchBedingung(const Suchauftrag& auftrag) {
    if (auftrag.txtSuchText.empty()) return {};
    const std::string comparison = auftrag.genauerWortlaut ? "= '" + auftrag.txtSuchText + "'" : "Like '%" + auftrag.txtSuchText + "%'";
    std::string condition;
    for (std::size_t i = 0; i < auftrag.chkTabelle.size(); ++i) {
        if (!auftrag.chkTabelle[i]) continue;
        condition += (condition.empty() ? "" : " or ") + (std::string(Spalten[i]) + " ") + comparison;
    }
    return condition;
}

bool DBSuchen(TipdbContext& ctx, const std::string& Bedingung, std::vector<Suchtreffer>& Liste) {
    Liste.clear();
    if (Bedingung.empty()) return true;
    bool answered = false;
    const bool read = reportAndGoOn(ctx, "DBSuchen", [&] {
        const auto rs = ctx.objDB.GetNewRS(ctx, ctx.objVerbindung.get(),
                                           "Select Index, Überschrift, Beschreibung, Wertname, HauptIndex From RegDaten where " + Bedingung + " order by 1");
        answered = rs->State() == RecordSet::Offen;
        if (!answered || rs->atEOF()) return;
        for (rs->MoveFirst(); !rs->atEOF(); rs->MoveNext())
            if (rs->numberOrZero<std::int32_t>(HauptIndex) == 0) Liste.push_back({rs->number<std::int32_t>(Index), rs->textOrEmpty(Überschrift)});
        ctx.objDB.RSClose(rs.get());
    });
    if (!read) Liste.clear();
    return read && answered;
}

}  // namespace brenvik
