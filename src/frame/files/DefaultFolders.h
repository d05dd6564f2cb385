#pragma once
// The folders of the settings: what each is called, and where it lies as long as the user chose no other. A folder that
// lies in the home, or in the program's own folder, belongs to it and goes along when that is copied or moved.
#include <array>
#include <string>

#include "frame/Context.h"

namespace brenvik {

struct FolderSetting {
    const char* name;                        // of the setting
    std::string Settings::*field;
    std::filesystem::path FrameContext::*base;
    const char* below;                       // of the base; empty: the base itself, with a separator at its end
};

// Lists live in the program's home, since its program directory may belong to the system.
inline constexpr std::array<FolderSetting, 4> FolderSettings{{
    {"Ostrana", &Settings::strOstranaPfad, &FrameContext::programPath, ""},
    {"Favorite", &Settings::strFavoritenPfad, &FrameContext::homePath, ""},
    {"History", &Settings::strHistoryPfad, &FrameContext::homePath, ""},
    {"RegBackupRestore", &Settings::strBackupPath, &FrameContext::homePath, "Backup"},
}};

// A host folder as the settings hold it (UTF-8): in one spelling, without a separator at its end.
std::string folderText(const std::filesystem::path& folder);

// The text that the setting has as long as nobody chose another folder, for a base of that text.
std::string defaultFolder(const FolderSetting& entry, const std::string& base);
std::string defaultFolder(const FrameContext& ctx, const FolderSetting& entry);
std::string defaultFolder(const FrameContext& ctx, std::string Settings::*field);

// Where a folder lies that lay in the base when it was saved: at the same place in the present one. Other folders stay.
std::string takenAlong(const std::string& folder, const std::string& baseThen, const std::string& baseNow);

}  // namespace brenvik
