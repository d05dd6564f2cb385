// tipdb-bauen: compiles the text sources of the tip database, or checks a finished one.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

#include "DatenbankQuelle.h"
#include "Pruefung.h"
#include "Schreiber.h"
#include "TomlQuelle.h"
#include "frame/DateiSystem.h"

namespace {

using namespace brenvik;
using namespace brenvik::tipbau;

std::string plural(std::size_t count, const std::string& one, const std::string& many) { return std::to_string(count) + " " + (count == 1 ? one : many); }

std::string summary(const Bestand& b) {
    std::size_t tips = 0;
    for (const Zeile& row : b.zeilen) tips += row.istKopf() ? 1 : 0;
    return plural(b.gruppen.size(), "Gruppe", "Gruppen") + ", " + plural(tips, "Tipp", "Tipps") + ", " + plural(b.zeilen.size(), "Zeile", "Zeilen") +
           (b.versionen.empty() ? "" : ", Version " + b.versionen.back().Version);
}

void print(const Beschwerden& complaints) {
    for (const std::string& line : complaints.lines()) std::cerr << line << "\n";
}

int build(const std::filesystem::path& folder, const std::filesystem::path& target) {
    Beschwerden complaints;
    const Bestand sources = readSources(folder, complaints);
    checkAll(sources, complaints);
    if (!complaints.empty()) {
        print(complaints);
        std::cerr << plural(complaints.lines().size(), "Fehler", "Fehler") << ", " << utf8FromPath(target.filename()) << " wurde nicht geschrieben.\n";
        return 1;
    }
    writeDatabase(sources, target);
    std::cout << utf8FromPath(target.filename()) << ": " << summary(sources) << "\n";
    return 0;
}

int check(const std::filesystem::path& file, const std::string& password) {
    Beschwerden complaints;
    const Bestand found = readFinishedDatabase(file, password, complaints);
    checkAll(found, complaints);
    for (const std::string& line : complaints.lines()) std::cout << line << "\n";
    std::cout << utf8FromPath(file.filename()) << ": " << summary(found) << "; "
              << (complaints.empty() ? "keine Beanstandungen" : plural(complaints.lines().size(), "Beanstandung", "Beanstandungen")) << "\n";
    return complaints.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    CLI::App app{"Übersetzt die Quellen der Tipp-Datenbank oder prüft eine fertige.", "tipdb-bauen"};
    std::string folder, target, finished, password;
    app.add_option("quellordner", folder, "Ordner mit den *.toml-Dateien");
    app.add_option("zieldatei", target, "Datenbank, die geschrieben wird");
    app.add_option("--check", finished, "prüft diese Datenbank (Jet 3, Jet 4 oder SQLite)");
    app.add_option("--password", password, "Kennwort der Datenbank, die geprüft wird");
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    if (finished.empty() == (folder.empty() || target.empty())) {
        std::cerr << app.help();
        return 2;
    }
    try {
        return finished.empty() ? build(pathFromUtf8(folder), pathFromUtf8(target)) : check(pathFromUtf8(finished), password);
    } catch (const std::exception& error) {
        std::cerr << "tipdb-bauen: " << error.what() << "\n";
        return 1;
    }
}
