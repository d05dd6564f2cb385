#include "frame/Context.h"

#include "frame/Messages.h"
#include "frame/Reports.h"
#include "frame/files/FileSystem.h"
#include "frame/text/Conversions.h"

namespace brenvik {

FrameContext::FrameContext(UserPort& userPort, Platform& hostPlatform) : port(userPort), platform(hostPlatform) {
    trace.setFailureReport([this](const std::string& procedure, std::int32_t errorNumber) {
        if (procedure.empty()) return port.tell(messages::LogMissing + utf8FromPath(homePath), box::Exclamation);
        std::string name = procedure;
        FehlerMeldung(*this, name, numberText(errorNumber));
    });
}

std::string DateTime::dateText() const { return format00(day) + "." + format00(month) + "." + format0000(year); }
std::string DateTime::timeText() const { return format00(hour) + ":" + format00(minute) + ":" + format00(second); }

}  // namespace brenvik
