#pragma once
// The files behind the Tip on screen: where the file of an entry lies, whether it is there, and getting bytes in and out.
#include <cstdint>
#include <filesystem>
#include <set>
#include <string>
#include <string_view>

#include "tipengine/tip/CurrentTip.h"

namespace brenvik {

class ProfileFile;

class TipFiles {
public:
    explicit TipFiles(CurrentTip& tip) : tip_(tip), ctx_(tip.context()) {}

    std::string path(std::int16_t i) const;              // a Windows path, or what the user chose in its place
    std::filesystem::path file(std::int16_t i) const;
    void DateiCheck(std::int16_t i, std::string& path, bool& found);   // asks where a missing file is
    void missing(const std::string& path, StatusLine* label);        // what is shown then
    static ProfileFile load(const std::filesystem::path& file);
    bool write(const std::filesystem::path& file, std::string_view bytes);
    bool backUp(std::int16_t i, std::string_view bytes);              // once a session, to "*.bvk"; false: told why not

private:
    CurrentTip& tip_;
    Context& ctx_;
    std::string hindrance_;                              // why the file asked for last is out of reach; empty: it is not
    std::set<std::filesystem::path> backedUp_;
};

}  // namespace brenvik
