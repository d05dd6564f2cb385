#pragma once
// The files that changes touch. A record names a file by its Windows path; it is looked for on the drives of the change's own
// machine and nowhere else, whatever the record says and wherever links lead.
#include <optional>
#include <string>

#include "tipengine/Context.h"

namespace brenvik {

// What a record keeps of a file that was changed: its Windows path, or the host's own where it lies on no drive.
std::string recordedFile(Context& ctx, const std::string& machine, const std::string& file);

class ChangedFile {
public:
    // Throws NumberedError with a German message for what is no such file: a path of the host, or one that leads off the drive.
    ChangedFile(Context& ctx, const std::string& machine, const std::string& windowsPath);
    std::optional<std::string> read() const;                     // none: not there
    void put(const std::optional<std::string>& bytes) const;     // none: takes it away
    bool isProtected() const;
    void setProtected(bool on) const;                            // only of a file that is there

private:
    std::string name_;
    std::filesystem::path file_;
};

}  // namespace brenvik
