#pragma once
// One hive file that is worked on: read whole at the first use, changed in memory, written as a whole new file beside and
// then put in its place. A walk through all of it goes over the bytes; the tree is built for whatever else is asked. Before
// the first writing a copy of the file is kept as <name>.bvk, with the rights of the file itself; of a dirty hive, whose logs
// belong to it, the logs too. Where that name is taken by something that is no file, nothing is written. The
// file of another program's hand is never overwritten: what has changed since it was read is refused. Failures are
// RegError: KeyNotRead, NoAssignment (not written), NoAccess (may not be written).
#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "registry/HiveFileKind.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/hivefile/HiveJournal.h"
#include "registry/store/RegStore.h"

namespace brenvik {

class HiveFile {
public:
    // Opens nothing yet. A salvaging file gives what can be read and is never written.
    explicit HiveFile(std::filesystem::path file, HiveMode mode = HiveMode::Strict, std::shared_ptr<HiveFileKind> kind = nullptr);
    ~HiveFile();
    HiveFile(const HiveFile&) = delete;
    HiveFile& operator=(const HiveFile&) = delete;

    void open();                                  // reads and checks the file, unless that has been done
    Hive& hive();
    void walk(std::string_view path, TreeSink& sink);   // tells nothing if the key is not there
    const std::vector<HiveFinding>& findings();   // what was wrong: replaying logs, salvaging
    bool writable();                              // asked of the file system each time
    std::string whyNotWritten();                  // what a kind says of it (German); empty: nothing
    void forget() { loaded_.reset(); }            // the next use reads the file again
    const std::filesystem::path& file() const { return file_; }

    // Writing goes in two steps, so that several files can be made ready before the first takes its place. Whoever writes holds the
    // lock of the folder all the time (registry/HiveCommit.h).
    void prepare();            // writes the new file beside
    HiveSwap swap();           // what is to be done then; throws if the file was changed meanwhile
    void tookPlace();          // it has been done
    void abandon() noexcept;   // takes a prepared file away
    void letGo() { fresh_.clear(); }   // somebody else will look after the prepared file

private:
    struct Stamp {
        std::uintmax_t size = 0;
        std::filesystem::file_time_type time;
        bool operator==(const Stamp&) const = default;
    };
    struct Loaded {
        std::shared_ptr<const HiveFileBytes> bytes;   // checked; until somebody wants the tree
        std::optional<HiveReading> reading;
        std::vector<Stamp> stamps;   // of the file and, if it was dirty, its logs
        std::string base;            // the file's first block as it was read
        std::optional<std::string> whyNotWritten;   // of a file with a kind, once it was asked
        bool dirty = false;
    };
    std::vector<Stamp> stamps(bool withLogs) const;
    void requireUnchanged();
    void keepFirstState();
    void load(bool asTree);
    Bytes freshBytes(Loaded& now);
    bool tryLoad(bool asTree);   // false: the file was changed while it was read
    Loaded& loaded();   // with its tree
    std::filesystem::path file_;
    HiveMode mode_;
    std::shared_ptr<HiveFileKind> kind_;
    std::unique_ptr<Loaded> loaded_;
    std::filesystem::path fresh_;   // prepared and not yet in place
    std::optional<HiveReading> freshReading_;   // of a file with a kind: what the prepared one tells
};

}  // namespace brenvik
