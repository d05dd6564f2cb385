#include "lists/undo/ChangedFiles.h"

#include <fmt/format.h>

#include "frame/Errors.h"
#include "frame/files/FileSystem.h"
#include "lists/Messages.h"

namespace brenvik {
namespace {

constexpr std::uintmax_t MostFile = 16u << 20;

bool isWindowsPath(const std::string& path) {
    const auto letter = [](char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); };
    return path.size() > 3 && letter(path[0]) && path[1] == ':' && path[2] == '\\';
}

}  // namespace

std::string recordedFile(Context& ctx, const std::string& machine, const std::string& file) {
    if (isWindowsPath(file)) return file;
    return ctx.machines.target(machine).files().windowsPath(pathFromUtf8(file)).value_or(file);
}

ChangedFile::ChangedFile(Context& ctx, const std::string& machine, const std::string& windowsPath) : name_(windowsPath) {
    if (!isWindowsPath(windowsPath)) throw NumberedError(errnum::PathFileAccess, fmt::format(messages::FileNotOnDrive, windowsPath));
    file_ = ctx.machines.target(machine).files().find(windowsPath);
}

std::optional<std::string> ChangedFile::read() const {
    std::error_code error;
    if (!std::filesystem::exists(file_, error)) return std::nullopt;
    return readFile(file_, MostFile);
}

void ChangedFile::put(const std::optional<std::string>& bytes) const {
    if (bytes) return writeFileAtomic(file_, *bytes);
    std::error_code error;
    std::filesystem::remove(file_, error);
    if (error) throw NumberedError(errnum::PathFileAccess, fmt::format("Die Datei \"{}\" kann nicht gelöscht werden.", name_));
}

bool ChangedFile::isProtected() const { return isReadOnly(file_); }

void ChangedFile::setProtected(bool on) const {
    std::error_code error;
    if (std::filesystem::exists(file_, error)) setReadOnly(file_, on);
}

}  // namespace brenvik
