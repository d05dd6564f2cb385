#include "tipengine/tip/TipFiles.h"

#include <fmt/format.h>

#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/files/ProfileFile.h"
#include "frame/text/Conversions.h"
#include "tipengine/Messages.h"

namespace brenvik {
namespace {
constexpr std::uintmax_t IniBound = 16u << 20;
}

std::string TipFiles::path(std::int16_t i) const {
    if (!ctx_.blnDateiSuchen) return ctx_.strGewaehlteDatei;
    const std::string& file = tip_.entry(i).SchlüsselNT;
    const std::string& folder = tip_.entry(i).Werteliste;
    if (folder.starts_with('%')) {
        if (!ctx_.istNT()) return windowsFolder(ctx_) + "\\" + file;
        const auto parts = Split(folder, "%");
        return targetEnvironment(ctx_, parts.size() > 1 ? parts[1] : std::string()) + "\\" + file;
    }
    return folder.empty() ? file : folder + "\\" + file;
}

std::filesystem::path TipFiles::file(std::int16_t i) const {
    const TargetFiles& files = ctx_.target().files();
    return ctx_.blnDateiSuchen ? files.find(path(i)) : userPath(files, path(i));
}

void TipFiles::DateiCheck(std::int16_t i, std::string& path, bool& found) {
    reportAndGoOn(ctx_, "DateiCheck", [&] {
        path = this->path(i);
        found = false;
        hindrance_.clear();
        try {
            std::error_code error;
            found = std::filesystem::is_regular_file(file(i), error);
        } catch (const NumberedError& error) {
            hindrance_ = error.what();   // no file of this machine, which no search mends
            return;
        }
        if (found || tip_.lookOnly) return;
        if (!ctx_.port.ask(messages::FileSearch1 + path + messages::FileSearch2)) return;
        const std::string& name = tip_.entry(i).SchlüsselNT;
        if (const auto choice = ctx_.port.chooseFile({path, name + " |" + name, messages::FileSearchTitle, false})) {
            found = true;
            ctx_.strGewaehlteDatei = path = *choice;
            ctx_.blnDateiSuchen = false;
        }
    });
}

void TipFiles::missing(const std::string& path, StatusLine* label) {
    if (label == nullptr) return;
    *label = {"[Datei: " + path + (hindrance_.empty() ? " nicht vorhanden]" : messages::FileNotReachable), StatusColour::Missing};
    MainWindow& f = tip_.window();
    f.RegFile = false;
    f.KeySave = false;
    f.fraSteuerung = false;
    f.txtInfo = hindrance_;
    f.txtInfoFarbe = f.fraInfoFarbe = TextColour::Rot;
    f.fraInfo = messages::FileNotFound;
}

ProfileFile TipFiles::load(const std::filesystem::path& file) { return ProfileFile(readFile(file, IniBound)); }

// Takes the write protection away for good, as a changed file has no use for it.
bool TipFiles::write(const std::filesystem::path& file, std::string_view bytes) {
    if (isReadOnly(file)) setReadOnly(file, false);
    try {
        std::filesystem::create_directories(file.parent_path());
        writeFileAtomic(file, bytes);
        return true;
    } catch (const std::exception& error) {
        ctx_.trace.write(std::string("--- Fehler: ") + error.what());
        return false;
    }
}

bool TipFiles::backUp(std::int16_t i, std::string_view bytes) {
    const std::filesystem::path original = file(i);
    if (backedUp_.contains(original)) return true;
    try {
        const TargetFiles& files = ctx_.target().files();
        writeFileAtomic(ctx_.blnDateiSuchen ? files.find(path(i) + ".bvk") : std::filesystem::path(original.string() + ".bvk"), bytes);
    } catch (const std::exception&) {
        ctx_.port.tell(fmt::format(messages::BootBackup, path(i)), box::Critical);
        return false;
    }
    backedUp_.insert(original);
    return true;
}

}  // namespace brenvik
