// tipdb-erzeugen ROWS FILE: writes a large made-up tip database (SQLite) for measuring.
#include <CLI/CLI.hpp>

#include <iostream>

#include "Erzeuger.h"
#include "Schreiber.h"
#include "frame/DateiSystem.h"

int main(int argc, char** argv) {
    CLI::App app{"Schreibt eine große erfundene Tipp-Datenbank zum Messen.", "tipdb-erzeugen"};
    std::size_t rows = 0;
    std::string file;
    app.add_option("zeilen", rows, "Zahl der Zeilen")->required()->check(CLI::Range(1, 400000));
    app.add_option("datei", file, "Datenbank, die geschrieben wird")->required();
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        return app.exit(error) == 0 ? 0 : 2;
    }
    try {
        brenvik::tipbau::writeDatabase(brenvik::tipbau::generated(rows), brenvik::pathFromUtf8(file));
    } catch (const std::exception& error) {
        std::cerr << "tipdb-erzeugen: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
