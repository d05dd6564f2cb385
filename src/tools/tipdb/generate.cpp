// tipdb-erzeugen ROWS FILE: writes a large made-up tip database (SQLite) for measuring.
#include <CLI/CLI.hpp>

#include <iostream>

#include "Generator.h"
#include "Writer.h"
#include "cli/UsageError.h"
#include "frame/files/FileSystem.h"
#include "frame/text/ShownOutput.h"
#include "tipengine/kinds/ValueForms.h"

int main(int argc, char** argv) {
    const brenvik::ShownOutput out(std::cout), err(std::cerr);
    using brenvik::decimal;
    constexpr std::int64_t MostRows = 400'000;
    CLI::App app{"Schreibt eine große erfundene Tipp-Datenbank zum Messen.", "tipdb-erzeugen"};
    app.set_help_flag("-h,--help", "Diese Hilfe ausgeben");
    std::size_t rows = 0;
    std::string file;
    app.add_option("zeilen", rows, "Zahl der Zeilen")->required()->type_name("ZAHL")->check([](const std::string& text) {
        const auto number = decimal(text);
        return number && *number >= 1 && *number <= MostRows ? std::string() : "erwartet wird eine Zahl von 1 bis " + std::to_string(MostRows);
    });
    app.add_option("datei", file, "Datenbank, die geschrieben wird")->required()->type_name("DATEI");
    brenvik::cli::germanHelp(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);   // help
        std::cerr << brenvik::cli::usageProblem(app, error) << "\ntipdb-erzeugen --help nennt, was möglich ist.\n";
        return 2;
    }
    try {
        brenvik::tipbuild::writeDatabase(brenvik::tipbuild::generated(rows), brenvik::pathFromUtf8(file));
    } catch (const std::exception& error) {
        std::cerr << "tipdb-erzeugen: " << error.what() << "\n";
        return 1;
    }
    return 0;
}
