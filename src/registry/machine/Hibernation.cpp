#include "registry/machine/Hibernation.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

#include "frame/UserPort.h"
#include "frame/platform/HostFile.h"
#include "registry/hivefile/HiveFileBytes.h"
#include "registry/store/RegLinks.h"

namespace brenvik {

namespace fs = std::filesystem;

bool isLiveImage(const fs::path& hiberfil) {
    std::error_code error;
    if (!fs::is_regular_file(fs::symlink_status(hiberfil, error))) return false;
    std::FILE* const in = host::openFile(hiberfil, "rb");
    if (in == nullptr) return true;   // it is there, and what it is cannot be known
    char start[4] = {};
    const std::size_t read = std::fread(start, 1, sizeof start, in);
    std::fclose(in);
    const std::string_view signature(start, read);
    return sameAscii(signature, "hibr") || sameAscii(signature, "rstr") || sameAscii(signature, "horm");
}

std::optional<fs::path> hibernatedAbove(const fs::path& file) {
    std::error_code error;
    const fs::path whole = fs::absolute(file, error);
    for (fs::path folder = whole.parent_path();; folder = folder.parent_path()) {
        for (const char* const name : {"hiberfil.sys", "HIBERFIL.SYS", "Hiberfil.sys"})
            if (isLiveImage(folder / name)) return folder / name;
        if (folder == folder.parent_path()) return std::nullopt;
    }
}

std::string hibernationNote(const fs::path& hiberfil) {
    return "Das Windows im Ordner " + shownFile(hiberfil.parent_path()) +
           " ist im Ruhezustand oder wurde mit dem Schnellstart heruntergefahren (hiberfil.sys). Was jetzt darin geschrieben wird, macht sein nächster Start "
           "rückgängig, oder es nimmt Schaden.";
}

std::string hibernationQuestion(const fs::path& hiberfil) {
    return hibernationNote(hiberfil) + " Starten Sie es besser erst und fahren Sie es ganz herunter (shutdown /s /t 0).\n\nSoll trotzdem geschrieben werden?";
}

bool mayBeWritten(UserPort& port, const fs::path& file) {
    const auto image = hibernatedAbove(file);
    return !image || port.ask(hibernationQuestion(*image), box::Exclamation + box::DefaultNo);
}

}  // namespace brenvik
