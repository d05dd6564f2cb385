// registry check | recover
#include <algorithm>
#include <iostream>

#include <fmt/format.h>

#include "cli/registry/RegistryGroup.h"
#include "frame/files/FileSystem.h"
#include "registry/CregFile.h"
#include "registry/creg/CregChecker.h"
#include "registry/hive/HiveChecker.h"
#include "registry/hive/HiveLog.h"
#include "registry/hive/HiveReader.h"
#include "registry/hive/HiveWriter.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/hivefile/HiveJournal.h"

namespace brenvik::cli {
namespace {

namespace fs = std::filesystem;
using nlohmann::ordered_json;

constexpr int Faulty = 1, Trouble = 2;

struct Rescue {
    HiveFileBytes files;
    HiveRecovery recovery;
    std::string logName(std::size_t index) const { return utf8FromPath(files.logs[index].file.filename()); }
};

// The file with what its logs hold, in memory; withLogs false: as it lies there.
Rescue rescue(const fs::path& hive, bool withLogs) {
    requireHiveFile(hive);
    Rescue found{readHiveFile(hive), {}};
    if (withLogs && !found.files.linkedLogs.empty())
        throw RegError(regerr::KeyNotRead, "Die Protokolldatei " + utf8FromPath(found.files.linkedLogs.front()) + " ist ein Verweis und wird nicht gelesen.");
    found.recovery = replayLogs(found.files.span(), withLogs ? found.files.logSpans() : std::vector<hivefmt::ByteSpan>());
    return found;
}

// A finding in a log with the log's name instead of its number.
std::string place(const Rescue& found, const HiveFinding& finding) {
    return fmt::format("{}0x{:X}", finding.log == 0 ? std::string() : found.logName(finding.log - 1) + " ", finding.offset);
}

void printUsed(const Rescue& found) {
    for (const LogEntryUsed& entry : found.recovery.used)
        std::cout << fmt::format("{}\tEintrag {}\tPosition 0x{:X}\t{} Seiten\n", found.logName(entry.log), entry.sequence, entry.offset, entry.pages);
}

ordered_json usedJson(const Rescue& found) {
    ordered_json list = ordered_json::array();
    for (const LogEntryUsed& entry : found.recovery.used)
        list.push_back({{"log", found.logName(entry.log)}, {"sequence", entry.sequence}, {"offset", entry.offset}, {"pages", entry.pages}});
    return list;
}

ordered_json findingJson(const Rescue& found, const HiveFinding& finding) {
    ordered_json entry{{"fault", finding.fault}, {"offset", finding.offset}, {"text", finding.text}};
    if (finding.log != 0) entry["log"] = found.logName(finding.log - 1);
    return entry;
}

std::size_t faultsIn(hivefmt::ByteSpan hive) {
    const std::vector<HiveFinding> findings = checkHive(hive);
    return static_cast<std::size_t>(std::count_if(findings.begin(), findings.end(), [](const HiveFinding& finding) { return finding.fault; }));
}

int check(const std::string& file, bool withLogs, bool json) {
    const fs::path hive = fs::absolute(pathFromUtf8(file));
    const bool isCreg = isCregFile(hive);   // without logs
    const Rescue found = isCreg ? Rescue{readHiveFile(hive), {}} : rescue(hive, withLogs);
    std::vector<HiveFinding> findings = found.recovery.findings;
    for (HiveFinding& finding : isCreg ? checkCreg(found.files.span()) : checkHive(found.recovery.hive)) findings.push_back(std::move(finding));
    std::size_t faults = 0;
    for (const HiveFinding& finding : findings) faults += finding.fault && finding.log == 0;
    const bool dirty = isDirty(found.files.span()), interrupted = isInterrupted(fs::canonical(hive));
    if (json) {
        ordered_json out{{"file", file}, {"dirty", dirty}, {"interrupted", interrupted}, {"faults", faults}, {"notes", findings.size() - faults}};
        out["entries"] = usedJson(found);
        out["findings"] = ordered_json::array();
        for (const HiveFinding& finding : findings) out["findings"].push_back(findingJson(found, finding));
        std::cout << jsonText(out) << "\n";
    } else {
        printUsed(found);
        for (const HiveFinding& finding : findings)
            std::cout << (finding.fault && finding.log == 0 ? "Fehler" : "Hinweis") << "\t" << place(found, finding) << "\t" << oneLine(finding.text) << "\n";
        std::cout << fmt::format("{} Fehler, {} Hinweise\n", faults, findings.size() - faults);
    }
    if (dirty && !withLogs) std::cerr << "Die Hivedatei wurde nicht ordentlich geschlossen; mit --logs wird geprüft, was ihre Protokolldateien daraus machen.\n";
    if (interrupted) std::cerr << "Eine Änderung mehrerer Hivedateien ist nicht zu Ende gebracht; das geschieht beim nächsten Lesen oder Schreiben.\n";
    return faults == 0 && !interrupted ? 0 : Faulty;
}

// What can be read of a damaged one, written anew.
Bytes salvaged(const Rescue& found) {
    const HiveReading reading = readHive(found.recovery.hive, HiveMode::Salvage);
    for (const HiveFinding& finding : reading.findings) std::cerr << finding.line() << "\n";
    HiveWriteOptions options;
    options.minorVersion = std::max<std::uint32_t>(reading.hive.minorVersion, 3);
    return writeHive(reading.hive, options);
}

int recover(const std::string& file, const std::string& target, bool salvage, bool json) {
    const fs::path hive = fs::absolute(pathFromUtf8(file)), out = fs::absolute(pathFromUtf8(target));
    std::error_code error;
    if (fs::exists(fs::symlink_status(out, error))) return failed("Die Datei ist schon vorhanden und bleibt, wie sie ist: " + target);
    if (fs::is_regular_file(hive, error)) settleInterrupted(fs::canonical(hive));
    Rescue found = rescue(hive, true);
    for (const HiveFinding& finding : found.recovery.findings) std::cerr << place(found, finding) << ": " << finding.text << "\n";
    Bytes bytes;
    bool whole = true;
    try {
        requireSoundHiveOf(hive, found.recovery.hive);
    } catch (const RegError& fault) {
        if (!salvage) return failed(std::string(fault.what()) + "\nMit --salvage wird geschrieben, was lesbar ist.");
        whole = false;
    }
    const std::size_t faults = whole ? faultsIn(found.recovery.hive) : 0;   // some that reading does not mind
    bytes = !whole || (salvage && faults > 0) ? salvaged(found) : std::move(found.recovery.hive);
    if (faults > 0 && !salvage) std::cerr << fmt::format("Die neue Datei hat Fehler wie die alte ({}); registry check nennt sie, mit --salvage wird alles neu geschrieben.\n", faults);
    if (!writeNewHiveFile(out, bytes, hive)) return failed("Die Datei ist schon vorhanden und bleibt, wie sie ist: " + target);
    if (json) {
        std::cout << jsonText({{"file", file}, {"out", target}, {"whole", whole}, {"entries", usedJson(found)}}) << "\n";
    } else {
        printUsed(found);
        std::cout << (found.recovery.used.empty() ? "Kein Eintrag einer Protokolldatei wurde gebraucht.\n" : "");
    }
    return 0;
}

}  // namespace

void addHiveCheckCommands(const RegistryGroup& group) {
    const auto file = std::make_shared<std::string>(), target = std::make_shared<std::string>();
    const auto withLogs = std::make_shared<bool>(false);
    auto* checker = group.add("check", "Eine Hivedatei oder eine Registrydatei von Windows 95/98/ME prüfen, ohne sie zu ändern. Ergebnis 0: keine Fehler (Hinweise schaden nicht), 1: Fehler, 2: nicht zu lesen");
    checker->add_option("HIVE", *file, "Hivedatei")->required();
    checker->add_flag("--logs", *withLogs, "Im Speicher erst einspielen, was die Protokolldateien daneben (.LOG, .LOG1, .LOG2) enthalten");
    group.on(checker, [&call = group.call, file, withLogs](Program&, Places&) { return check(*file, *withLogs, call.json); }, Trouble);

    auto* recoverer = group.add("recover", "Eine nicht ordentlich geschlossene Hivedatei mit ihren Protokolldateien als neue Datei schreiben und sagen, welche Einträge gebraucht wurden");
    recoverer->add_option("HIVE", *file, "Hivedatei; sie und ihre Protokolldateien bleiben, wie sie sind")->required();
    recoverer->add_option("OUT", *target, "Neue Hivedatei; eine vorhandene bleibt, wie sie ist")->required();
    group.maySalvage(recoverer);
    group.on(recoverer, [&call = group.call, file, target, salvage = group.salvage](Program&, Places&) { return recover(*file, *target, *salvage, call.json); });
}

}  // namespace brenvik::cli
