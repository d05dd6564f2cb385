// tipdb-bauen: compiles the text sources of the tip database, or checks a finished one.
#include <CLI/CLI.hpp>

#include <cstdio>
#include <iostream>

#include "FromDatabase.h"
#include "Check.h"
#include "Writer.h"
#include "FromToml.h"
#include "cli/UsageError.h"
#include "frame/files/FileSystem.h"
#include "frame/text/ShownOutput.h"

namespace {

using namespace brenvik;
using namespace brenvik::tipbuild;

std::string plural(std::size_t count, const std::string& one, const std::string& many) { return std::to_string(count) + " " + (count == 1 ? one : many); }

std::string summary(const Stock& b) {
    std::size_t tips = 0;
    for (const Zeile& row : b.lines) tips += row.isHeading() ? 1 : 0;
    return plural(b.gruppen.size(), "Gruppe", "Gruppen") + ", " + plural(tips, "Tipp", "Tipps") + ", " + plural(b.lines.size(), "Zeile", "Zeilen") +
           (b.versions.empty() ? "" : ", Version " + b.versions.back().Version);
}

void print(std::ostream& out, const std::vector<std::string>& lines) {
    for (const std::string& line : lines) out << line << "\n";
}

int build(const std::filesystem::path& folder, const std::filesystem::path& target) {
    Complaints complaints;
    const Stock sources = readSources(folder, complaints);
    checkAll(sources, complaints);
    print(std::cerr, complaints.hints());
    if (!complaints.empty()) {
        print(std::cerr, complaints.lines());
        std::cerr << plural(complaints.lines().size(), "Fehler", "Fehler") << ", " << utf8FromPath(target.filename()) << " wurde nicht geschrieben.\n";
        return 1;
    }
    writeDatabase(sources, target);
    std::cout << utf8FromPath(target.filename()) << ": " << summary(sources) << "\n";
    return 0;
}

int check(const std::filesystem::path& file, const std::string& password) {
    Complaints complaints;
    const Stock found = readFinishedDatabase(file, password, complaints);
    checkAll(found, complaints);
    print(std::cout, complaints.hints());
    print(std::cout, complaints.lines());
    std::cout << utf8FromPath(file.filename()) << ": " << summary(found) << "; "
              << (complaints.empty() ? "keine Beanstandungen" : plural(complaints.lines().size(), "Beanstandung", "Beanstandungen")) << "\n";
    return complaints.empty() ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    const ShownOutput out(std::cout), err(std::cerr);
    CLI::App app{"Übersetzt die Quellen der Tipp-Datenbank oder prüft eine fertige.", "tipdb-bauen"};
    std::string folder, target, finished, password;
    app.set_help_flag("-h,--help", "Diese Hilfe ausgeben");
    app.add_option("quellordner", folder, "Ordner mit den *.toml-Dateien")->type_name("ORDNER");
    app.add_option("zieldatei", target, "Datenbank, die geschrieben wird")->type_name("DATEI");
    app.add_option("--check", finished, "prüft diese Datenbank (Jet 3, Jet 4 oder SQLite)")->type_name("DATEI");
    app.add_option("--password", password, "Kennwort der Datenbank, die geprüft wird")->type_name("TEXT");
    cli::germanHelp(app);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0) return app.exit(error);   // help
        std::cerr << cli::usageProblem(app, error) << "\ntipdb-bauen --help nennt, was möglich ist.\n";
        return 2;
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
