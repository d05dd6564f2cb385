// Whatever a REG file holds: it is read, and what was understood comes back from what is written of it.
#include <cstdlib>

#include "registry/text/RegText.h"
#include "registry/text/RegTextWriter.h"

using namespace brenvik;

namespace {

std::string written(const std::vector<RegOperation>& operations, std::size_t& lost) {
    RegTextWriter writer(RegTextWriter::Format::Version5);
    for (const RegOperation& operation : operations) {
        // Nothing makes a root, so that its header stands for no operation.
        if (operation.key.empty()) writer.key(operation.root, "");
        switch (operation.kind) {
            case RegOperation::Kind::CreateKey: writer.key(operation.root, operation.key); break;
            case RegOperation::Kind::DeleteKey: writer.deleteKey(operation.root, operation.key); break;
            case RegOperation::Kind::SetValue: writer.value(operation.name, operation.value); break;
            case RegOperation::Kind::DeleteValue: writer.deleteValue(operation.name); break;
        }
    }
    lost = writer.lost();
    return writer.bytes();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    RegText first = parseRegText({reinterpret_cast<const char*>(data), size});
    if (!first.ok()) return 0;
    std::size_t lost = 0;
    RegText second = parseRegText(written(first.operations, lost));
    if (lost != 0) return 0;
    for (RegText* const text : {&first, &second}) {
        for (RegOperation& operation : text->operations) operation.line = 0;
    }
    if (!second.ok() || second.operations != first.operations) std::abort();
    return 0;
}
