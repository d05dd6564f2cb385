#pragma once
// The database tables in memory and the one shared record set, as part of the program's state.
#include <array>
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "registry/RegistryContext.h"
#include "tipdb/Tipp.h"
#include "tipdb/bvkADO.h"

namespace brenvik {

struct Gruppe {
    std::string Name;
    std::int32_t Nummer = 0;
    std::string Beschreibung;
    std::int32_t TippAnzahl = -1;            // index of the last Tip in Tipps
    std::vector<std::int32_t> Tipps;
};

struct Treebaum {
    std::int32_t Nummer = 0;
    std::int16_t Vorgänger = 0;
    std::int32_t Ebene = 0;
    std::int32_t Gruppe = 0;                 // index into udtGruppen
};

struct TipListEntry {
    std::int32_t Index = 0;
    std::string Überschrift;
    std::int16_t Symbol = 0;
    std::string NeuInVersion;
    std::array<bool, 7> Filter{};            // [0] always, then 95, 98, ME, NT, 2000, XP
};

// An opened database with its tables in memory; a new one takes the place of the old as a whole.
struct TipDatabase {
    std::filesystem::path databaseFile;    // that it was read from
    std::unique_ptr<Connection> objVerbindung;
    std::unique_ptr<RecordSet> objRS;
    bool blnDBGeladen = false;
    std::string strDBVersion, strDBDatum;
    std::vector<std::string> strDBVersionen;
    std::vector<Gruppe> udtGruppen;
    std::vector<Treebaum> udtTreebaum;
    std::vector<TipListEntry> udtTippListe;  // intTippAnzahl is its size
};

struct TipdbContext : RegistryContext, TipDatabase {
    using RegistryContext::RegistryContext;

    bvkADO objDB;
    Tipp aktuellerTipp;
    bool blnTippGeladen = false;
    std::vector<std::string> strDateiListe;  // file names of a <filelist> Tip, [0] unused
};

}  // namespace brenvik
