// Reading and writing whole files, and the program's file helpers.
#include "frame/files/FileSystem.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <limits>
#include <memory>

#include <fmt/format.h>

#include "frame/Messages.h"
#include "frame/Reports.h"
#include "frame/files/FreshFile.h"
#include "frame/platform/HostFile.h"
#include "frame/text/Characters.h"
#include "frame/text/Conversions.h"
#include "frame/text/Texts.h"

namespace brenvik {

namespace fs = std::filesystem;

std::string fileErrorText(const std::error_code& code) {
    if (code == std::errc::no_such_file_or_directory) return "Die Datei oder ihr Ordner ist nicht vorhanden.";
    if (code == std::errc::permission_denied || code == std::errc::operation_not_permitted) return "Der Zugriff wurde verweigert.";
    if (errorNumberOf(std::system_error(code)) == errnum::DiskFull) return "Der Datenträger ist voll.";
    if (code == std::errc::read_only_file_system) return "Der Datenträger ist schreibgeschützt.";
    if (code == std::errc::not_a_directory) return "Der Pfad führt durch eine Datei.";
    if (code == std::errc::too_many_symbolic_link_levels) return "Die Verknüpfungen führen im Kreis.";
    if (code == std::errc::is_a_directory) return "Statt einer Datei steht dort ein Ordner.";
    if (code == std::errc::filename_too_long) return "Der Name ist zu lang.";
    if (code == std::errc::io_error) return "Der Datenträger meldet einen Fehler.";
    return code.message();
}

namespace {

[[noreturn]] void fail(const std::error_code& code, const fs::path& file) {
    throw NumberedError(errorNumberOf(std::system_error(code)), fmt::format("Auf die Datei \"{}\" kann nicht zugegriffen werden: {}", utf8FromPath(file), fileErrorText(code)));
}

struct CloseFile {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

// What the user named, on the host or on the embedded Windows.
std::vector<fs::path> userMatches(const FrameContext& ctx, std::string_view pattern) {
    const fs::path host = pathFromUtf8(pattern);
    if (!host.is_absolute()) return localFiles(ctx).matches(pattern);
    return filesFitting(host.parent_path(), utf8FromPath(host.filename()));
}

// False also for names that no file can have.
bool existsText(const FrameContext& ctx, std::string_view path) {
    try {
        std::error_code error;
        return !path.empty() && fs::exists(userPath(ctx, path), error);
    } catch (const NumberedError&) {
        return false;
    }
}

bool isFolder(const fs::path& path) {
    std::error_code ignored;
    return fs::is_directory(path, ignored);
}

void copyOne(const fs::path& source, const fs::path& target) {
    std::error_code error;
    const fs::path file = fs::is_directory(target, error) ? target / source.filename() : target;
    if (fs::equivalent(source, file, error)) return;
    writeFileAtomic(file, readFile(source, std::numeric_limits<std::uintmax_t>::max()));
}

// The file behind a name, through links also where nothing stands at their end yet.
fs::path behindLinks(const fs::path& file) {
    constexpr int MostLinks = 40;
    fs::path target = file;
    std::error_code error;
    for (int links = 0; fs::is_symlink(fs::symlink_status(target, error)); ++links) {
        if (links == MostLinks) fail(std::make_error_code(std::errc::too_many_symbolic_link_levels), file);
        const fs::path next = fs::read_symlink(target, error);
        if (error) fail(error, file);
        target = target.parent_path() / next;   // an absolute one takes the place of what stands before
    }
    return target;
}

// Where a link leads, if that can be written.
fs::path writableTarget(const fs::path& file) {
    std::error_code error;
    const fs::path target = behindLinks(file);
    if (host::isReadOnly(target)) throw NumberedError(errnum::PathFileAccess, fmt::format("Die Datei \"{}\" ist schreibgeschützt.", utf8FromPath(file)));
    if (fs::exists(target, error) && !fs::is_regular_file(target, error)) fail(std::make_error_code(std::errc::permission_denied), file);
    return target;
}

void fillFile(const fs::path& fresh, const fs::path& named, const std::function<void(const OutputPiece&)>& fill) {
    std::unique_ptr<std::FILE, CloseFile> out(host::openFile(fresh, "ab"));
    if (out == nullptr) fail(std::error_code(errno, std::generic_category()), named);
    fill([&](std::string_view piece) {
        if (std::fwrite(piece.data(), 1, piece.size(), out.get()) != piece.size()) fail(std::error_code(errno, std::generic_category()), named);
    });
    if (const std::error_code error = host::flushToDisk(out.get())) fail(error, named);
    if (std::fclose(out.release()) != 0) fail(std::error_code(errno, std::generic_category()), named);
}

}  // namespace

std::string readFile(const fs::path& file, std::uintmax_t limit) {
    std::error_code error;
    const fs::file_status status = fs::status(file, error);
    if (error) fail(error, file);
    if (!fs::is_regular_file(status)) fail(std::make_error_code(std::errc::permission_denied), file);
    const std::unique_ptr<std::FILE, CloseFile> in(host::openFile(file, "rb"));
    if (in == nullptr) fail(std::error_code(errno, std::generic_category()), file);
    const auto requireAtMost = [&](std::uintmax_t size) {
        if (size > limit) throw NumberedError(errnum::OutOfMemory, fmt::format("Die Datei \"{}\" ist zu groß (mehr als {} Bytes).", utf8FromPath(file), limit));
    };
    std::string bytes;
    if (const std::uintmax_t size = fs::file_size(file, error); !error) {
        requireAtMost(size);
        bytes.reserve(static_cast<std::size_t>(size));
    }
    char buffer[65536];
    for (std::size_t count; (count = std::fread(buffer, 1, sizeof buffer, in.get())) > 0;) {
        requireAtMost(bytes.size() + count);   // it may be growing
        bytes.append(buffer, count);
    }
    if (std::ferror(in.get()) != 0) fail(std::make_error_code(std::errc::io_error), file);
    return bytes;
}

void writeFileAtomic(const fs::path& file, std::string_view bytes) {
    const fs::path target = writableTarget(file), fresh = freshNameBeside(target);
    sweepLeftBehind(target);
    std::error_code error = host::writeNewFile(fresh, bytes, target);
    if (!error) error = host::replaceFile(fresh, target);
    if (error) {
        std::error_code ignored;
        fs::remove(fresh, ignored);
        fail(error, file);
    }
}

void writeFileAtomic(const fs::path& file, const std::function<void(const OutputPiece&)>& fill) {
    const fs::path target = writableTarget(file), fresh = freshNameBeside(target);
    sweepLeftBehind(target);
    if (const std::error_code error = host::writeNewFile(fresh, {}, target)) fail(error, file);
    try {
        fillFile(fresh, file, fill);
        if (const std::error_code error = host::replaceFile(fresh, target)) fail(error, file);
    } catch (...) {
        std::error_code ignored;
        fs::remove(fresh, ignored);
        throw;
    }
}

bool isReadOnly(const fs::path& file) { return host::isReadOnly(file); }

void setReadOnly(const fs::path& file, bool on) {
    if (const std::error_code error = host::setReadOnly(file, on)) fail(error, file);
}

// Two marks go back to the last star only, so the time stays a product of the two lengths.
bool fitsPattern(std::string_view name, std::string_view pattern) {
    if (pattern == "*.*") return true;
    const std::string text = lowerCase(name), mask = lowerCase(pattern);
    std::size_t t = 0, m = 0, star = std::string::npos, starText = 0;
    while (t < text.size()) {
        std::size_t textEnd = t, maskEnd = m;
        const char32_t letter = characters::next(text, textEnd);
        const char32_t wanted = m < mask.size() ? characters::next(mask, maskEnd) : 0;
        if (wanted == U'*') {
            star = m = maskEnd, starText = t;
        } else if (wanted != 0 && (wanted == U'?' || wanted == letter)) {
            t = textEnd, m = maskEnd;
        } else if (star != std::string::npos) {
            characters::next(text, starText);
            t = starText, m = star;
        } else {
            return false;
        }
    }
    return mask.find_first_not_of('*', m) == std::string::npos;
}

bool ExistFileDirDrive(FrameContext& ctx, std::string_view path) {
    ProcTrace trace(ctx.trace, "ExistFileDirDrive");
    trace.p(path);
    std::string name(path);
    const bool letter = !name.empty() && ((name[0] >= 'a' && name[0] <= 'z') || (name[0] >= 'A' && name[0] <= 'Z'));
    if (letter && name.size() == 1) name += ":\\";
    else if (letter && name.size() == 2 && name[1] == ':') name += "\\";
    const bool exists = existsText(ctx, name);
    trace.r(exists);
    return exists;
}

std::int16_t DirList(FrameContext& ctx, const TargetFiles& files, std::string_view pattern, std::vector<std::string>& names) {
    ProcTrace trace(ctx.trace, "DirList");
    trace.p(pattern);
    std::int16_t count = 0;
    reportAndGoOn(ctx, "DirList", [&] {
        std::vector<std::string> found;
        for (const fs::path& file : files.matches(pattern))
            if (!isFolder(file)) found.push_back(lowerCase(utf8FromPath(file.filename())));
        if (found.empty()) return;
        if (found.size() > static_cast<std::size_t>(std::numeric_limits<std::int16_t>::max())) throw NumberedError(errnum::Overflow, "Überlauf");
        std::sort(found.begin(), found.end(), [](const std::string& left, const std::string& right) { return compareText(left, right) < 0; });
        count = static_cast<std::int16_t>(found.size());
        found.insert(found.begin(), std::string());   // names count from 1
        names = std::move(found);
    });
    trace.r(count);
    return count;
}

bool DateiDel(FrameContext& ctx, std::string_view path) {
    ProcTrace trace(ctx.trace, "DateiDel");
    trace.p(path);
    bool complete = true;
    const bool ran = reportAndGoOn(ctx, "DateiDel", [&] {
        for (const fs::path& file : userMatches(ctx, path)) {
            std::error_code error;
            if (isFolder(file) || isReadOnly(file) || !fs::remove(file, error) || error) complete = false;
        }
    });
    trace.r(ran && complete);
    return ran && complete;
}

bool DateiCopy(FrameContext& ctx, std::string_view source, std::string_view target) {
    ProcTrace trace(ctx.trace, "DateiCopy");
    trace.p(source).p(target);
    bool complete = false;
    try {
        const fs::path to = userPath(ctx, target);
        const auto files = userMatches(ctx, source);
        complete = !files.empty() && (files.size() == 1 || isFolder(to));
        for (const fs::path& file : files)
            if (complete) copyOne(file, to);
    } catch (const NumberedError& error) {
        trace.note(error.what());
        complete = false;
    }
    if (!complete) ctx.port.tell(strBVKTexte(204));
    trace.r(complete);
    return complete;
}

std::string withSeparator(std::string folder) {
    if (!folder.empty() && !folder.ends_with('\\') && !folder.ends_with('/')) folder += folder.find('/') == std::string::npos ? '\\' : '/';
    return folder;
}

std::string BrowseForFolder(FrameContext& ctx, std::string_view start, std::string_view title) {
    return withSeparator(ctx.port.chooseFolder(title.empty() ? messages::ChooseFolder : title, start).value_or(""));
}

std::string GetShortPath(FrameContext& ctx, std::string_view path) {
    ProcTrace trace(ctx.trace, "GetShortPath");
    trace.p(path);
    const bool exists = existsText(ctx, path);
    trace.r(exists ? path : std::string_view());
    return exists ? std::string(path) : std::string();
}

}  // namespace brenvik
