#pragma once
// Several hive files that take their places together, over a crash too. Beside each one a small journal <hive>.bvk-journal is
// written first; that of the first file tells the whole plan, the others lead to it, and it is the last to come and the last to
// go. As long as it is there the plan is finished by whoever opens one of the files; where it is missing, what the others
// tell of never took place. Only files are put in place that lie beside their target under a name of ours.
#include <cstdint>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace brenvik {

struct HiveSwap {
    std::filesystem::path file, fresh;   // the hive and what is to become it, in the same folder
    std::string before, after;           // first blocks of the two, by which the states are told apart
};

// 4096 bytes, fewer if there are no more. Registry files of the 9x family have no numbers that count up: of them all bytes.
std::string firstBlock(const std::filesystem::path& hive);

// The caller holds the folders' locks (HiveFolderLocks). From the return of begin on the change stands, even if finish fails or is
// not reached any more. Both throw RegError NoAssignment; a begin that fails leaves no journal.
void beginSwaps(const std::vector<HiveSwap>& swaps);
void finishSwaps(const std::vector<HiveSwap>& swaps);

// What an interrupted change left of this hive is finished or taken back, with all others that belong to it. Throws
// RegError KeyNotRead if that cannot be done, or if another program has changed some of the files in between.
void settleInterrupted(const std::filesystem::path& hive);
bool isInterrupted(const std::filesystem::path& hive);
// Removes what processes left that ended before their plan stood. The caller holds the folder's lock and has seen no journal.
void sweepUnfinished(const std::filesystem::path& hive) noexcept;

// Locks the folders of the files, always in the same order. Throws RegError NoAssignment if somebody else does not give one back.
class HiveFolderLocks {
public:
    explicit HiveFolderLocks(const std::vector<std::filesystem::path>& files);
    ~HiveFolderLocks();
    HiveFolderLocks(const HiveFolderLocks&) = delete;
    HiveFolderLocks& operator=(const HiveFolderLocks&) = delete;

private:
    struct Held;
    std::vector<Held> held_;
};

// The journal as it lies in its file. Paths are relative to the journal's folder, "/" between the names.
struct HiveJournalRecord {
    struct Entry {
        std::string file, fresh;            // fresh: a name in the folder of file
        std::uint64_t before = 0, after = 0;   // of the first blocks
        bool operator==(const Entry&) const = default;
    };
    std::uint64_t change = 0;      // the same in all journals of one change
    std::string first;             // the hive whose journal has the plan; empty: this one
    std::vector<Entry> entries;    // of the plan all, else the one of this hive
    bool operator==(const HiveJournalRecord&) const = default;
};
std::string writeJournal(const HiveJournalRecord& record);
std::optional<HiveJournalRecord> readJournal(std::string_view text);   // nothing: damaged, or none

}  // namespace brenvik
