#include "tipengine/DisplayForm.h"

#include "frame/Errors.h"
#include "frame/Konvertierung.h"
#include "tipengine/Panel.h"

namespace brenvik {

std::string displayForm(FrameContext& ctx, std::int16_t kind, std::int32_t type, std::string text) {
    if (kind == art::CheckBox && type == 1) {
        text = lowerCase(text);
    } else if (kind == art::TextWerte && type == 4) {
        text = Dec2Hex(ctx, toLng(text));
    } else if (kind == art::ZahlenWerte && type == 3) {
        std::int32_t sum = 0;
        for (const std::string& piece : Split(text, " ")) {
            sum += static_cast<std::int32_t>(Val(Hex2Dec(piece)));
            if (sum > 32767) throw NumberedError(errnum::Overflow, "Überlauf");
        }
        text = numberText(sum);
    }
    if (type == 4 && text.find('-') != std::string::npos && toLng(text) < 0) text = numberText(toLng(text) + 2147483648.0 + 2147483648.0);
    return text;
}

}  // namespace brenvik
