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

struct Suchauftrag {
    std::string txtSuchText;
    std::array<bool, 3> chkTabelle{true, true, true};   // Wertname, Überschrift, Beschreibung
    bool genauerWortlaut = false;                       // the whole column, not a part of it
};

struct Suchtreffer {
    std::int32_t Index = 0;
    std::string Überschrift;
    bool operator==(const Suchtreffer&) const = default;
};

// The condition of the statement; empty if there is nothing to look for. The text goes in as it was typed.
std::string suchBedingung(const Suchauftrag& auftrag);

// The head rows that fit, by their number. False: the statement failed, which was reported; the list is empty.
bool DBSuchen(TipdbContext& ctx, const std::string& Bedingung, std::vector<Suchtreffer>& Liste);

struct Suchergebnis {
    enum class Art { NichtsZuSuchen, Gescheitert, Gesucht } art = Art::NichtsZuSuchen;
    std::vector<Suchtreffer> treffer;
};

struct SuchenAnfrage : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_Suchen"; }
    Suchauftrag auftrag;                                          // as it was left
    std::function<Suchergebnis(const Suchauftrag&)> suchen;
    std::string gewaehlt;                                         // heading of the hit to open, empty: none
};

}  // namespace brenvik
