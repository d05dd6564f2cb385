#include "cli/ValueInput.h"

#include <fmt/format.h>

#include <algorithm>
#include <memory>

#include "frame/Errors.h"
#include "frame/platform/HostFile.h"

namespace brenvik::cli {
namespace {

constexpr std::size_t Longest = 64u << 20;   // more than any value holds

}  // namespace

std::string readValue(int descriptor) {
    const std::unique_ptr<std::FILE, int (*)(std::FILE*)> in(host::openDescriptor(descriptor), &std::fclose);
    if (!in) throw NumberedError(errnum::PathFileAccess, fmt::format("Der Deskriptor {} kann nicht gelesen werden.", descriptor));
    std::string text, piece(1 << 16, '\0');
    while (const std::size_t read = std::fread(piece.data(), 1, piece.size(), in.get())) {
        text.append(piece, 0, read);
        if (text.size() > Longest) throw NumberedError(errnum::OutOfMemory, "Der Wert auf der Eingabe ist zu groß.");
    }
    if (std::ferror(in.get())) throw NumberedError(errnum::PathFileAccess, fmt::format("Der Deskriptor {} kann nicht gelesen werden.", descriptor));
    if (text.ends_with('\n')) text.pop_back();
    if (text.ends_with('\r')) text.pop_back();
    return text;
}

void fillFromInput(std::vector<std::string>& values, int descriptor) {
    const auto isRead = [](const std::string& value) { return value == FromInput; };
    if (std::count_if(values.begin(), values.end(), isRead) > 1) throw NumberedError(errnum::InvalidCall, "Von der Eingabe kann nur ein Wert gelesen werden.");
    const auto place = std::find_if(values.begin(), values.end(), isRead);
    if (place != values.end()) *place = readValue(descriptor);
}

}  // namespace brenvik::cli
