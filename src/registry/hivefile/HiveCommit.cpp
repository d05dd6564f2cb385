#include "registry/hivefile/HiveCommit.h"

#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"

namespace brenvik {

namespace {

void replaceOne(HiveFile& file) {
    const HiveSwap swap = file.swap();
    if (const std::error_code error = host::replaceFile(swap.fresh, swap.file))
        throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(swap.file) + " kann nicht geschrieben werden: " + fileErrorText(error));
    file.tookPlace();
}

void replaceAll(const std::vector<HiveFile*>& files) {
    std::vector<HiveSwap> swaps;
    for (HiveFile* const file : files) swaps.push_back(file->swap());
    beginSwaps(swaps);
    try {
        finishSwaps(swaps);
    } catch (const RegError& error) {
        for (HiveFile* const file : files) file->letGo();
        throw RegError(error.number, std::string(error.what()) + " Beim nächsten Lesen der Hivedateien wird die Änderung zu Ende gebracht.");
    }
    for (HiveFile* const file : files) file->tookPlace();
}

}  // namespace

void writeTogether(const std::vector<HiveFile*>& files) {
    if (files.empty()) return;
    std::vector<std::filesystem::path> names;
    for (HiveFile* const file : files) {
        settleInterrupted(file->file());
        names.push_back(file->file());
    }
    const HiveFolderLocks locks(names);
    for (HiveFile* const file : files) {
        if (isInterrupted(file->file())) throw RegError(regerr::NoAssignment, "Die Hivedatei " + shownFile(file->file()) + " hat gerade ein anderes Programm mitten in einer Änderung verlassen. Es wurde nichts geschrieben.");
        file->prepare();
    }
    files.size() == 1 ? replaceOne(*files.front()) : replaceAll(files);
}

}  // namespace brenvik
