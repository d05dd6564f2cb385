#include "registry/hivefile/HiveFile.h"

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <thread>

#include "frame/files/FileSystem.h"
#include "frame/files/FreshFile.h"
#include "frame/platform/HostFile.h"
#include "registry/hive/HiveLog.h"
#include "registry/hive/HiveWriter.h"
#include "registry/hivefile/HiveInPlace.h"
#include "registry/store/RegLinks.h"
#include "registry/store/RegTree.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr const char* CopyEnding = ".bvk";

fs::path resolved(const fs::path& file) {
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    return error ? file : real;
}

void fillFrom(const fs::path& source, const fs::path& target) {
    constexpr std::size_t piece = 1 << 16;
    const auto close = [](std::FILE* file) { std::fclose(file); };
    const std::unique_ptr<std::FILE, decltype(close)> in(host::openFile(source, "rb")), out(host::openFile(target, "ab"));
    std::string bytes(piece, '\0');
    bool done = in != nullptr && out != nullptr;
    for (std::size_t count; done && (count = std::fread(bytes.data(), 1, piece, in.get())) > 0;) done = std::fwrite(bytes.data(), 1, count, out.get()) == count;
    done = done && std::ferror(in.get()) == 0;
    const std::error_code failure = done ? host::flushToDisk(out.get()) : std::error_code(errno, std::generic_category());
    if (!done || failure) throw RegError(regerr::NoAssignment, fileErrorText(failure));
}

// The copy is what file is: with its rights, whoever may read it. Not by way of the memory, which has the tree to hold.
void keepCopy(const fs::path& file) {
    fs::path copy = file;
    copy += CopyEnding;
    std::error_code error;
    const fs::file_status there = fs::symlink_status(copy, error);
    if (fs::is_regular_file(there)) return;
    if (fs::exists(there)) {
        throw RegError(regerr::NoAssignment, "Die Sicherungskopie " + shownFile(copy) + " kann nicht angelegt werden, weil dort ein Verweis, ein Ordner oder "
                                                 "etwas anderes steht, das keine Datei ist. Es wurde nichts geschrieben. Benennen Sie es um.");
    }
    sweepLeftBehind(copy);
    const fs::path fresh = writeBeside(copy, {}, file);
    std::string reason;
    try {
        fillFrom(file, fresh);
        if ((error = host::replaceFile(fresh, copy))) reason = fileErrorText(error);
    } catch (const RegError& failure) {
        reason = failure.what();
    }
    if (reason.empty()) return;
    fs::remove(fresh, error);
    throw RegError(regerr::NoAssignment, "Die Sicherungskopie " + shownFile(copy) + " kann nicht angelegt werden: " + reason);
}

hivefmt::ByteSpan spanOf(const std::string& bytes) { return {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()}; }

}  // namespace

HiveFile::HiveFile(fs::path file, HiveMode mode, std::shared_ptr<HiveFileKind> kind) : file_(resolved(file)), mode_(mode), kind_(std::move(kind)) {}

HiveFile::~HiveFile() { abandon(); }

std::vector<HiveFile::Stamp> HiveFile::stamps(bool withLogs) const {
    std::vector<fs::path> files{file_};
    if (withLogs) {
        for (fs::path& log : logsBeside(file_)) files.push_back(std::move(log));
    }
    std::vector<Stamp> found;
    for (const fs::path& file : files) {
        std::error_code error, ignored;
        found.push_back({fs::file_size(file, error), fs::last_write_time(file, ignored)});
    }
    return found;
}

void HiveFile::load(bool asTree) {
    constexpr int tries = 40;
    constexpr std::chrono::milliseconds between(5);
    if (mode_ == HiveMode::Strict) settleInterrupted(file_);
    for (int i = 1; !tryLoad(asTree); ++i) {
        if (i == tries) throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(file_) + " wird gerade von einem anderen Programm geändert.");
        std::this_thread::sleep_for(between);
    }
}

bool HiveFile::tryLoad(bool asTree) {
    auto fresh = std::make_unique<Loaded>();
    const std::vector<Stamp> before = stamps(true);
    auto bytes = std::make_shared<const HiveFileBytes>(readHiveFile(file_));
    fresh->dirty = isDirty(bytes->span());
    fresh->base = kind_ ? bytes->hive : bytes->hive.substr(0, hivefmt::headerSize);
    if (stamps(true) != before || firstBlock(file_) != fresh->base) return false;
    fresh->stamps = stamps(fresh->dirty);
    if (kind_) {
        fresh->reading = namingTheFile(file_, [&] { return kind_->read(bytes->span(), mode_); });
    } else if (asTree || fresh->dirty || mode_ == HiveMode::Salvage) {
        fresh->reading = readHiveFrom(*bytes, file_, mode_);
    } else {
        requireSoundHiveOf(file_, bytes->span());
        fresh->bytes = std::move(bytes);
    }
    loaded_ = std::move(fresh);
    return true;
}

void HiveFile::open() {
    if (!loaded_) load(false);
}

HiveFile::Loaded& HiveFile::loaded() {
    if (!loaded_) load(true);
    if (!loaded_->reading) {
        loaded_->reading = readHiveFrom(*loaded_->bytes, file_, mode_);
        loaded_->bytes.reset();
    }
    return *loaded_;
}

Hive& HiveFile::hive() { return loaded().reading->hive; }

const std::vector<HiveFinding>& HiveFile::findings() {
    static const std::vector<HiveFinding> none;
    open();
    return loaded_->reading ? loaded_->reading->findings : none;
}

void HiveFile::walk(std::string_view path, TreeSink& sink) {
    if (path.empty()) open();
    // Held here too: whoever listens may ask for something that needs the tree.
    if (const auto bytes = loaded_ ? loaded_->bytes : nullptr; bytes && path.empty()) return tellHive(bytes->span(), sink);
    if (const HiveKey* const found = hive().findPath(path)) walkHiveKey(hive(), *found, sink);
}

// Opening for writing is what a medium that can only be read refuses, whatever the marks of the file say.
bool HiveFile::writable() {
    if (mode_ == HiveMode::Salvage) return false;
    if (!whyNotWritten().empty()) return false;
    if (host::isReadOnly(file_)) return kind_ != nullptr;   // a kind's own Windows marks its files so; the mark stays
    std::FILE* const probe = host::openFile(file_, "r+b");
    if (probe == nullptr) return false;
    std::fclose(probe);
    return true;
}

std::string HiveFile::whyNotWritten() {
    if (!kind_) return {};
    try {
        open();
    } catch (const RegError& error) {
        return error.what();
    }
    if (!loaded_->whyNotWritten) loaded_->whyNotWritten = kind_->whyNotWritten(spanOf(loaded_->base));
    return *loaded_->whyNotWritten;
}

void HiveFile::requireUnchanged() {
    if (stamps(loaded_->dirty) == loaded_->stamps && firstBlock(file_) == loaded_->base) return;
    forget();
    throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file_) +
                                             " wurde inzwischen von einem anderen Programm geändert. Es wurde nichts geschrieben; "
                                             "beim nächsten Lesen gilt der neue Stand der Datei.");
}

void HiveFile::keepFirstState() {
    keepCopy(file_);
    if (!loaded_->dirty) return;
    for (const fs::path& log : logsBeside(file_)) keepCopy(log);
}

void HiveFile::prepare() {
    if (!writable()) throw RegError(regerr::NoAccess, "Die Hivedatei " + shownFile(file_) + " kann nur gelesen werden." + (whyNotWritten().empty() ? "" : " " + whyNotWritten()));
    Loaded& now = loaded();
    requireUnchanged();
    abandon();
    sweepUnfinished(file_);
    const Bytes bytes = freshBytes(now);
    keepFirstState();
    fresh_ = writeBeside(file_, bytes, file_);
    now.reading->hive.header.assign(bytes.begin(), kind_ ? bytes.end() : bytes.begin() + hivefmt::headerSize);
}

Bytes HiveFile::freshBytes(Loaded& now) {
    if (kind_) return kind_->write(spanOf(now.base), now.reading->hive, freshReading_.emplace().hive);
    HiveWriteOptions options;
    options.lastWritten = fileTimeNow();
    try {
        return writeHive(now.reading->hive, options);
    } catch (const HiveError& error) {
        throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file_) + " kann diesen Inhalt nicht aufnehmen. " + error.what());
    }
}

HiveSwap HiveFile::swap() {
    requireUnchanged();
    const Bytes& after = loaded_->reading->hive.header;
    return {file_, fresh_, loaded_->base, {after.begin(), after.end()}};
}

void HiveFile::tookPlace() {
    fresh_.clear();
    Hive& hive = loaded_->reading->hive;
    loaded_->base.assign(hive.header.begin(), hive.header.end());
    if (kind_) {
        loaded_->reading = std::move(freshReading_);   // as the file tells it: without what it cannot keep
        loaded_->whyNotWritten = std::string();
    } else {
        hive.sequence += 1;
        hive.lastWritten = hivefmt::get64(hive.header.data() + hivefmt::header::LastWritten);
    }
    loaded_->dirty = false;
    loaded_->stamps = stamps(false);
}

void HiveFile::abandon() noexcept {
    if (fresh_.empty()) return;
    std::error_code ignored;
    fs::remove(fresh_, ignored);
    fresh_.clear();
}

}  // namespace brenvik
