#include "registry/HiveFile.h"

#include <cstdio>

#include "frame/DateiSystem.h"
#include "frame/HostDatei.h"
#include "registry/HiveInPlace.h"
#include "registry/RegLinks.h"
#include "registry/RegTree.h"
#include "registry/hive/HiveLog.h"
#include "registry/hive/HiveWriter.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

constexpr const char* CopyEnding = ".bvk";

fs::path resolved(const fs::path& file) {
    std::error_code error;
    const fs::path real = fs::canonical(file, error);
    return error ? file : real;
}

void keepCopy(const fs::path& file, const std::string& bytes) {
    fs::path copy = file;
    copy += CopyEnding;
    std::error_code error;
    if (fs::exists(fs::symlink_status(copy, error))) return;
    const fs::path fresh = writeBeside(copy, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    if ((error = host::replaceFile(fresh, copy))) {
        std::error_code ignored;
        fs::remove(fresh, ignored);
        throw RegError(regerr::NoAssignment, "Die Sicherungskopie " + shownFile(copy) + " kann nicht angelegt werden: " + error.message());
    }
}

std::string baseBlock(const fs::path& file) {
    std::string bytes(hivefmt::headerSize, '\0');
    std::FILE* const in = host::openFile(file, "rb");
    if (in == nullptr) return {};
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), in));
    std::fclose(in);
    return bytes;
}

}  // namespace

HiveFile::HiveFile(fs::path file, HiveMode mode) : file_(resolved(file)), mode_(mode) {}

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
    auto fresh = std::make_unique<Loaded>();
    const std::vector<Stamp> before = stamps(true);
    const auto bytes = std::make_shared<const HiveFileBytes>(readHiveFile(file_));
    fresh->dirty = isDirty(bytes->span());
    if (asTree || fresh->dirty || mode_ == HiveMode::Salvage) {
        fresh->reading = readHiveFrom(*bytes, file_, mode_);
    } else {
        requireSoundHiveOf(file_, bytes->span());
        fresh->bytes = bytes;
    }
    fresh->base = bytes->hive.substr(0, hivefmt::headerSize);
    if (stamps(true) != before || baseBlock(file_) != fresh->base) {
        throw RegError(regerr::KeyNotRead, "Die Hivedatei " + shownFile(file_) + " wird gerade von einem anderen Programm geändert.");
    }
    fresh->stamps = stamps(fresh->dirty);
    loaded_ = std::move(fresh);
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
    if (mode_ == HiveMode::Salvage || host::isReadOnly(file_)) return false;
    std::FILE* const probe = host::openFile(file_, "r+b");
    if (probe == nullptr) return false;
    std::fclose(probe);
    return true;
}

void HiveFile::requireUnchanged() {
    if (stamps(loaded_->dirty) == loaded_->stamps && baseBlock(file_) == loaded_->base) return;
    forget();
    throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file_) +
                                             " wurde inzwischen von einem anderen Programm geändert. Es wurde nichts geschrieben; "
                                             "beim nächsten Lesen gilt der neue Stand der Datei.");
}

void HiveFile::keepFirstState() {
    const HiveFileBytes bytes = readHiveFile(file_);
    keepCopy(file_, bytes.hive);
    if (!loaded_->dirty) return;
    for (const fs::path& log : logsBeside(file_)) keepCopy(log, readFile(log, MaxHiveFile));
}

void HiveFile::prepare() {
    if (!writable()) throw RegError(regerr::NoAccess, "Die Hivedatei " + shownFile(file_) + " kann nur gelesen werden.");
    Loaded& now = loaded();
    requireUnchanged();
    abandon();
    try {   // before the new file is made, so that only one of them fills the memory
        keepFirstState();
    } catch (const NumberedError& error) {
        throw RegError(regerr::NoAssignment, error.what());
    }
    HiveWriteOptions options;
    options.lastWritten = fileTimeNow();
    Bytes bytes;
    try {
        bytes = writeHive(now.reading->hive, options);
    } catch (const HiveError& error) {
        throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file_) + " kann diesen Inhalt nicht aufnehmen. " + error.what());
    }
    fresh_ = writeBeside(file_, bytes);
    now.reading->hive.header.assign(bytes.begin(), bytes.begin() + hivefmt::headerSize);
}

void HiveFile::commit() {
    if (!loaded_ || fresh_.empty()) return;
    requireUnchanged();
    if (const std::error_code error = host::replaceFile(fresh_, file_)) {
        throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file_) + " kann nicht geschrieben werden: " + error.message());
    }
    fresh_.clear();
    Hive& hive = loaded_->reading->hive;
    hive.sequence += 1;
    hive.lastWritten = hivefmt::get64(hive.header.data() + hivefmt::header::LastWritten);
    loaded_->base.assign(hive.header.begin(), hive.header.end());
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
