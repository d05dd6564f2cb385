#pragma once
// What the program knows about the system it looks at, as far as neither the registry nor a window takes part.
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "frame/Context.h"

namespace brenvik {

struct OperatingSystem {
    std::int16_t intBS = 0;
    std::string strBS;
    bool dialog = false;       // the user is asked to send in the figures (frmBVK_OSErkennung)
    bool operator==(const OperatingSystem&) const = default;
};

// frmBVK_OSErkennung: asks the user to send in the figures of a system that was not recognised.
struct OSErkennungRequest : WindowRequest {
    std::string_view windowName() const override { return "frmBVK_OSErkennung"; }
    OSVERSIONINFO version;
};

OperatingSystem determineSystem(std::uint32_t platformId, std::uint32_t major, std::uint32_t minor);

// What a Windows behind those of the table is called ("Windows 7", "Windows 11"); empty if nobody knows.
std::string laterWindows(const OSVERSIONINFO& version);

// Decides and traces, and sets strBS, strBSName and intBS; a system outside of both families opens frmBVK_OSErkennung. With BSErsatz an unrecognised system then counts as Windows XP (strBS keeps
// saying that it is unknown); the answer is the plain decision.
OperatingSystem BSErmitteln(FrameContext& ctx, const OSVERSIONINFO& version);

// Names of the entries of mnuTools that are hidden ("mnuTools" itself: the whole menu).
std::vector<std::string_view> hiddenMenus(std::int16_t intBS);
inline bool istWin9x(std::int16_t intBS) { return intBS == 1 || intBS == 2 || intBS == 5; }
inline bool istNTFamilie(std::int16_t intBS) { return intBS == 3 || intBS == 4 || intBS == 6; }

std::string ReadUserName(FrameContext& ctx);    // "<unbekannt>" if it cannot be had
std::string Windir(FrameContext& ctx);          // the Windows folder, without a "\" at the end
// Version of the browser component into intIEMajor, intIEMinor, intIEBuild; false if there is none.
bool GetIEVersion(FrameContext& ctx);
bool AdminCheck(FrameContext& ctx);             // on a host without Windows accounts: the own registry is the user's

// Value of an environment variable of the Windows that the program looks at ("windir", "SystemRoot", "SystemDrive" follow
// the context; names ignore case there), else of the host. Empty if there is none.
std::string environmentValue(const FrameContext& ctx, std::string_view name);

}  // namespace brenvik
