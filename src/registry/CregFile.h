#pragma once
// Registry files of Windows 95, 98 and ME on the disk: worked on as hives are, but written by the smallest change in place of a
// whole new file, and only after a question.
#include <filesystem>
#include <memory>
#include <string>
#include <vector>

#include "registry/creg/CregText.h"
#include "registry/hivefile/HiveStore.h"

namespace brenvik {

bool isCregFile(const std::filesystem::path& file);   // by its start

// The code page is what the file itself tells, else system, else the SYSTEM.DAT that lies where a Windows has it.
std::shared_ptr<HiveFile> cregFile(const std::filesystem::path& file, std::shared_ptr<HiveFile> system = nullptr, HiveMode mode = HiveMode::Strict);
CregCodepage codepageIn(const Hive& system);

// Asks before the first of its files is written: as long as none of them has its copy of the first state.
class CregFileStore : public HiveStore {
public:
    void add(std::string place, const std::shared_ptr<HiveFile>& file);   // below HKLM; "": the file is all of it
    using Questions = std::function<std::vector<std::string>(const std::vector<HiveFile*>&)>;
    void setMoreQuestions(Questions questions) { more_ = std::move(questions); }

protected:
    std::vector<std::string> questionsBeforeWriting(const std::vector<HiveFile*>& files) override;

private:
    std::vector<std::filesystem::path> files_;
    Questions more_;
};

// One file as a store, as openHiveFile does it.
std::unique_ptr<RegStore> openCregFile(const std::filesystem::path& file, const HiveOpenOptions& options = {});

}  // namespace brenvik
