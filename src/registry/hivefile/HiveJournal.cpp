#include "registry/hivefile/HiveJournal.h"

#include <algorithm>
#include <charconv>
#include <cstdio>
#include <memory>
#include <random>
#include <set>

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"
#include "frame/files/FreshFile.h"
#include "frame/platform/HostFile.h"
#include "registry/creg/CregFormat.h"
#include "registry/hive/HiveLog.h"
#include "registry/hivefile/HiveFileBytes.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr std::string_view Heading = "Brenvik-Hives 1";
constexpr std::uintmax_t MostJournal = 64 << 10;
constexpr std::size_t MostEntries = 64;
constexpr std::chrono::milliseconds LongestWait(10000);

fs::path journalOf(const fs::path& hive) {
    fs::path journal = hive;
    return journal += ".bvk-journal";
}

std::uint64_t identity(std::string_view bytes) { return logHash({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}); }

fs::path folderOf(const fs::path& file) { return file.has_parent_path() ? file.parent_path() : fs::path("."); }

std::string relativePath(const fs::path& file, const fs::path& folder) {
    const std::u8string text = file.lexically_relative(folder).generic_u8string();
    const bool sayable = !text.empty() && std::none_of(text.begin(), text.end(), [](char8_t c) { return c < 0x20; });
    if (!sayable) throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file) + " kann nicht zusammen mit anderen geschrieben werden: ihr Name oder ihr Platz lässt es nicht zu.");
    return {text.begin(), text.end()};
}

// Without it nobody can tell whether the change stands.
[[noreturn]] void cannotReadJournal(const fs::path& hive, const std::string& why) {
    throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(hive) + " wurde mitten in einer Änderung mehrerer Hivedateien verlassen, und deren Journal " +
                                           shownFile(journalOf(hive)) + " kann nicht gelesen werden. Bis dahin wird sie weder gelesen noch geschrieben. " + why);
}

std::optional<HiveJournalRecord> journalBeside(const fs::path& hive) {
    const fs::path journal = journalOf(hive);
    std::error_code error;
    const auto there = [&] { return fs::symlink_status(journal, error).type(); };
    const fs::file_type kind = there();
    if (kind == fs::file_type::none) cannotReadJournal(hive, fileErrorText(error));
    if (kind != fs::file_type::regular) return std::nullopt;
    try {
        return readJournal(readFile(journal, MostJournal));
    } catch (const NumberedError& failure) {
        if (failure.number == errnum::OutOfMemory || there() == fs::file_type::not_found) return std::nullopt;   // none of ours, or settled just now
        cannotReadJournal(hive, failure.what());
    }
}

void putInPlace(const fs::path& fresh, const fs::path& file, std::int32_t number) {
    if (const std::error_code error = host::replaceFile(fresh, file))
        throw RegError(number, "Die Datei " + shownFile(file) + " kann nicht geschrieben werden: " + fileErrorText(error));
}

void writeBesideHive(const fs::path& hive, const HiveJournalRecord& record) {
    const std::string text = writeJournal(record);
    const fs::path journal = journalOf(hive);
    const fs::path fresh = writeBeside(journal, {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}, hive);
    putInPlace(fresh, journal, regerr::NoAssignment);
}

// A plan as it concerns the files at hand. What a journal says is not believed: it may have come with a folder from anywhere.
struct Plan {
    struct Step {
        fs::path file, fresh;
        std::uint64_t before = 0, after = 0;
    };
    fs::path first;
    std::vector<Step> steps;
};

// No link on the way, so that nothing outside of the folders meant is reached.
std::optional<fs::path> hiveAt(const fs::path& folder, const std::string& relative) {
    const fs::path path = pathFromUtf8(relative);
    if (path.is_absolute() || path.has_root_name() || !path.has_filename()) return std::nullopt;
    const fs::path file = (folder / path).lexically_normal();
    std::error_code error;
    if (fs::canonical(folderOf(file), error) != folderOf(file) || error) return std::nullopt;
    return file;
}

std::optional<Plan::Step> stepOf(const fs::path& folder, const HiveJournalRecord::Entry& entry) {
    const auto file = hiveAt(folder, entry.file);
    const fs::path fresh = pathFromUtf8(entry.fresh);
    if (!file || fresh.has_parent_path() || !isFreshNameOf(fresh, *file)) return std::nullopt;
    return Plan::Step{*file, folderOf(*file) / fresh, entry.before, entry.after};
}

[[noreturn]] void refuseJournal(const fs::path& hive) {
    throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(hive) + " wurde mitten in einer Änderung mehrerer Hivedateien verlassen, und das Journal " +
                                           shownFile(journalOf(hive)) + " ist nicht zu gebrauchen. Spielen Sie eine Sicherung zurück, oder löschen Sie das Journal.");
}

// The plan that a hive's journal belongs to. Its steps are only this hive's if the whole plan is not there.
struct Found {
    Plan plan;
    bool stands = false;   // the change is to be finished; else it is taken back
};

Found planOf(const fs::path& hive, const HiveJournalRecord& own) {
    Found found;
    const auto first = own.first.empty() ? std::optional(hive) : hiveAt(folderOf(hive), own.first);
    if (!first) refuseJournal(hive);
    found.plan.first = *first;
    const auto whole = own.first.empty() ? std::optional(own) : journalBeside(*first);
    found.stands = whole && whole->change == own.change && whole->first.empty();
    const HiveJournalRecord& told = found.stands ? *whole : own;
    for (const HiveJournalRecord::Entry& entry : told.entries) {
        const auto step = stepOf(folderOf(found.stands ? *first : hive), entry);
        if (!step) refuseJournal(hive);
        found.plan.steps.push_back(*step);
    }
    return found;
}

bool isAt(const fs::path& file, std::uint64_t state) {
    std::error_code error;
    return fs::is_regular_file(fs::symlink_status(file, error)) && identity(firstBlock(file)) == state;
}

// The plan itself goes last: while it is there the others mean something.
void removeJournals(const Plan& plan) noexcept {
    std::error_code ignored;
    for (const Plan::Step& step : plan.steps) {
        fs::remove(step.fresh, ignored);
        if (step.file != plan.first) fs::remove(journalOf(step.file), ignored);
    }
    fs::remove(journalOf(plan.first), ignored);
}

void finishPlan(const Plan& plan) {
    std::string written, missed;
    std::vector<const Plan::Step*> open;
    const auto name = [](std::string& list, const fs::path& file) { list.append(list.empty() ? "" : ", ").append(shownFile(file)); };
    for (const Plan::Step& step : plan.steps) {
        if (isAt(step.file, step.after)) {
            name(written, step.file);
        } else if (isAt(step.file, step.before) && isAt(step.fresh, step.after)) {
            open.push_back(&step);
        } else {
            name(missed, step.file);
        }
    }
    if (missed.empty()) {
        for (const Plan::Step* const step : open) putInPlace(step->fresh, step->file, regerr::KeyNotRead);
    } else {
        for (const Plan::Step* const step : open) name(missed, step->file);
    }
    removeJournals(plan);
    if (!missed.empty() && !written.empty()) {
        throw RegError(regerr::KeyNotRead, "Eine Änderung mehrerer Hivedateien wurde mittendrin abgebrochen und kann nicht mehr zu Ende gebracht werden, weil seither ein anderes "
                                           "Programm geschrieben hat. Geschrieben: " + written + ". Nicht geschrieben: " + missed + ". Beim nächsten Lesen gilt, was jetzt da steht.");
    }
}

std::vector<fs::path> filesOf(const Plan& plan, const fs::path& hive) {
    std::vector<fs::path> files{hive, plan.first};
    for (const Plan::Step& step : plan.steps) files.push_back(step.file);
    return files;
}

}  // namespace

// ---- The journal's text ----

std::string writeJournal(const HiveJournalRecord& record) {
    std::string text = fmt::format("{}\n{:016x}\n{}\n{}\n", Heading, record.change, record.first, record.entries.size());
    for (const auto& e : record.entries) text += fmt::format("{}\n{}\n{:016x}\n{:016x}\n", e.file, e.fresh, e.before, e.after);
    return text += fmt::format("{:016x}\n", identity(text));
}

std::optional<HiveJournalRecord> readJournal(std::string_view text) {
    constexpr std::size_t checkSize = 17;
    if (text.size() < checkSize || text.size() > MostJournal) return std::nullopt;
    const std::string_view told = text.substr(0, text.size() - checkSize);
    if (text.substr(told.size()) != fmt::format("{:016x}\n", identity(told))) return std::nullopt;
    std::string_view rest = told;
    bool whole = true;
    const auto line = [&] {
        const std::size_t end = rest.find('\n');
        whole = whole && end != std::string_view::npos;
        const std::string_view found = rest.substr(0, whole ? end : 0);
        rest.remove_prefix(whole ? end + 1 : rest.size());
        return found;
    };
    const auto number = [&](int base) {
        const std::string_view digits = line();
        std::uint64_t value = 0;
        const auto [at, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
        whole = whole && error == std::errc() && at == digits.data() + digits.size();
        return value;
    };
    if (line() != Heading) return std::nullopt;
    HiveJournalRecord record;
    record.change = number(16);
    record.first = line();
    const std::uint64_t entries = number(10);
    if (!whole || entries == 0 || entries > MostEntries) return std::nullopt;
    for (std::uint64_t i = 0; i < entries && whole; ++i) {
        HiveJournalRecord::Entry& e = record.entries.emplace_back();
        e.file = line();
        e.fresh = line();
        e.before = number(16);
        e.after = number(16);
    }
    return whole && rest.empty() ? std::optional(record) : std::nullopt;
}

std::string firstBlock(const fs::path& hive) {
    std::string bytes(hivefmt::headerSize, '\0');
    std::FILE* const in = host::openFile(hive, "rb");
    if (in == nullptr) return {};
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), in));
    if (cregfmt::isCreg({reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()})) {
        std::string piece(1 << 16, '\0');
        for (std::size_t count; bytes.size() <= MaxHiveFile && (count = std::fread(piece.data(), 1, piece.size(), in)) > 0;) bytes.append(piece, 0, count);
    }
    std::fclose(in);
    return bytes;
}

// ---- Writing together ----

void beginSwaps(const std::vector<HiveSwap>& swaps) {
    std::random_device random;
    const fs::path& first = swaps.front().file;
    HiveJournalRecord plan;
    plan.change = static_cast<std::uint64_t>(random()) << 32 | random();
    for (const HiveSwap& swap : swaps)
        plan.entries.push_back({relativePath(swap.file, folderOf(first)), utf8FromPath(swap.fresh.filename()), identity(swap.before), identity(swap.after)});
    try {
        for (std::size_t i = 1; i < swaps.size(); ++i) {
            HiveJournalRecord own{plan.change, relativePath(first, folderOf(swaps[i].file)), {plan.entries[i]}};
            own.entries[0].file = utf8FromPath(swaps[i].file.filename());
            writeBesideHive(swaps[i].file, own);
        }
        writeBesideHive(first, plan);
    } catch (...) {
        std::error_code ignored;
        for (const HiveSwap& swap : swaps) fs::remove(journalOf(swap.file), ignored);
        throw;
    }
}

void finishSwaps(const std::vector<HiveSwap>& swaps) {
    Plan plan{swaps.front().file, {}};
    for (const HiveSwap& swap : swaps) {
        putInPlace(swap.fresh, swap.file, regerr::NoAssignment);
        plan.steps.push_back({swap.file, swap.fresh, 0, 0});
    }
    removeJournals(plan);
}

bool isInterrupted(const fs::path& hive) {
    std::error_code error;
    return fs::exists(fs::symlink_status(journalOf(hive), error));
}

void sweepUnfinished(const fs::path& hive) noexcept {
    sweepLeftBehind(hive);
    sweepLeftBehind(journalOf(hive));
}

// Without the lock the journal only tells which folders to lock: whoever writes just now holds them, and has it gone when he is done.
void settleInterrupted(const fs::path& hive) {
    for (int round = 0; isInterrupted(hive); ++round) {
        const auto seen = journalBeside(hive);
        if (!seen && !isInterrupted(hive)) return;
        if (!seen || round == 3) refuseJournal(hive);
        const std::vector<fs::path> files = filesOf(planOf(hive, *seen).plan, hive);
        const HiveFolderLocks locks(files);
        const auto own = journalBeside(hive);
        if (!own) continue;
        const Found found = planOf(hive, *own);
        if (filesOf(found.plan, hive) != files) continue;
        if (found.stands) {
            finishPlan(found.plan);
        } else {
            if (isInterrupted(found.plan.first) && !journalBeside(found.plan.first)) refuseJournal(found.plan.first);   // it may have stood
            std::error_code ignored;
            for (const Plan::Step& step : found.plan.steps)
                if (step.file == hive) fs::remove(step.fresh, ignored);
            fs::remove(journalOf(hive), ignored);
        }
        if (isInterrupted(hive)) refuseJournal(hive);   // on a medium that cannot be written, for one
    }
}

// ---- Locks ----

struct HiveFolderLocks::Held {
    std::unique_ptr<host::FolderLock> lock;
};

HiveFolderLocks::HiveFolderLocks(const std::vector<fs::path>& files) {
    std::set<fs::path> folders;
    for (const fs::path& file : files) folders.insert(folderOf(file));
    for (const fs::path& folder : folders) {
        held_.push_back({std::make_unique<host::FolderLock>(folder, LongestWait)});
        const std::error_code error = held_.back().lock->error();
        if (error == std::errc::timed_out) throw RegError(regerr::NoAssignment, "Im Ordner " + shownFile(folder) + " schreibt gerade ein anderes Programm. Versuchen Sie es noch einmal.");
        if (error) throw RegError(regerr::NoAssignment, "Der Ordner " + shownFile(folder) + " kann nicht gegen andere Programme gesperrt werden: " + fileErrorText(error));
    }
}

HiveFolderLocks::~HiveFolderLocks() = default;

}  // namespace brenvik
