#include "registry/CregFile.h"

#include <algorithm>
#include <cstdio>

#include <fmt/format.h>

#include "frame/files/FileSystem.h"
#include "frame/platform/HostFile.h"
#include "frame/text/Conversions.h"
#include "registry/Messages.h"
#include "registry/creg/CregReader.h"
#include "registry/creg/CregWriter.h"
#include "registry/machine/OfflineWindows.h"

namespace brenvik {

namespace fs = std::filesystem;

namespace {

class CregKind final : public HiveFileKind {
public:
    CregKind(fs::path file, std::shared_ptr<HiveFile> system) : file_(std::move(file)), system_(std::move(system)) {}

    HiveReading read(hivefmt::ByteSpan file, HiveMode mode) override {
        HiveReading reading = readCreg(file, mode);
        own_ = codepageIn(reading.hive);
        return reading;
    }
    std::string whyNotWritten(hivefmt::ByteSpan file) override { return brenvik::whyNotWritten(file); }
    Bytes write(hivefmt::ByteSpan file, const Hive& wanted, Hive& written) override {
        Bytes bytes = writeCreg(file, wanted, codepage(), &written);
        own_ = codepageIn(written);   // what is not put in place is read again
        return bytes;
    }

private:
    CregCodepage codepage() {
        if (own_.number != 0) return own_;
        try {
            if (!system_ && !looked_) {
                const auto beside = systemBeside();
                if (beside) system_ = cregFile(*beside, nullptr);
            }
            looked_ = true;
            return system_ ? codepageIn(system_->hive()) : own_;
        } catch (const RegError&) {
            return own_;   // a damaged one does not tell it
        }
    }
    // A user's file lies beside the system's or two folders below it.
    std::optional<fs::path> systemBeside() const {
        const fs::path folder = fs::absolute(file_).parent_path();
        for (const fs::path& place : {folder, folder.parent_path().parent_path()}) {
            const auto found = findBelow(place, "SYSTEM.DAT");
            if (found && isCregFile(*found) && *found != file_) return found;
        }
        return std::nullopt;
    }

    fs::path file_;
    std::shared_ptr<HiveFile> system_;
    bool looked_ = false;
    CregCodepage own_;   // that this file tells itself
};

}  // namespace

// A pipe would keep whoever opens it waiting.
bool isCregFile(const fs::path& file) {
    std::uint8_t start[4] = {};
    std::error_code error;
    std::FILE* const in = fs::is_regular_file(file, error) ? host::openFile(file, "rb") : nullptr;
    if (in == nullptr) return false;
    const std::size_t count = std::fread(start, 1, sizeof start, in);
    std::fclose(in);
    return cregfmt::isCreg({start, count});
}

std::shared_ptr<HiveFile> cregFile(const fs::path& file, std::shared_ptr<HiveFile> system, HiveMode mode) {
    return std::make_shared<HiveFile>(file, mode, std::make_shared<CregKind>(file, std::move(system)));
}

CregCodepage codepageIn(const Hive& system) {
    const HiveKey* const key = system.findPath("System\\CurrentControlSet\\Control\\Nls\\Codepage");
    const HiveValue* const value = key == nullptr ? nullptr : key->value("ACP");
    if (value == nullptr || value->data.type != regtype::Sz) return {};
    const double number = Val(toText(value->data));
    return {number > 0 && number < 65536 ? static_cast<std::uint32_t>(number) : 0};
}

void CregFileStore::add(std::string place, const std::shared_ptr<HiveFile>& file) {
    files_.push_back(file->file());
    mount(Root::LocalMachine, std::move(place), file);
}

std::vector<std::string> CregFileStore::questionsBeforeWriting(const std::vector<HiveFile*>& files) {
    std::vector<std::string> questions = HiveStore::questionsBeforeWriting(files);
    const bool written = std::any_of(files_.begin(), files_.end(), [](fs::path file) {
        std::error_code error;
        return fs::is_regular_file(fs::symlink_status(file += ".bvk", error));
    });
    if (!written) {
        std::string question = messages::NichtErprobt;
        for (const HiveFile* const file : files) question += fmt::format(messages::BleibtErhalten, shownFile(file->file()), utf8FromPath(file->file().filename()));
        questions.push_back(std::move(question));
    }
    if (more_) {
        for (std::string& question : more_(files)) questions.push_back(std::move(question));
    }
    return questions;
}

std::unique_ptr<RegStore> openCregFile(const fs::path& file, const HiveOpenOptions& options) {
    const auto hive = cregFile(file, nullptr, options.salvage ? HiveMode::Salvage : HiveMode::Strict);
    hive->open();
    if (options.tell) {
        for (const HiveFinding& finding : hive->findings()) options.tell(finding);
    }
    auto store = std::make_unique<CregFileStore>();
    store->setAsk(options.ask);
    store->add("", hive);
    return store;
}

}  // namespace brenvik
