#include "registry/RegOperations.h"

#include <algorithm>

#include "frame/Errors.h"
#include "registry/store/RegLimits.h"

namespace brenvik {

namespace {

void apply(RegStore& store, const RegOperation& operation) {
    switch (operation.kind) {
        case RegOperation::Kind::CreateKey: store.createKey(operation.root, operation.key); return;
        case RegOperation::Kind::SetValue: store.setValue(operation.root, operation.key, operation.name, operation.value); return;
        case RegOperation::Kind::DeleteValue: store.deleteValue(operation.root, operation.key, operation.name); return;
        case RegOperation::Kind::DeleteKey:
            // Below HKCR the user's key covers the machine's, which shows only when the first is gone.
            for (int layer = 0; layer < 2 && store.keyExists(operation.root, operation.key); ++layer) {
                store.clear(operation.root, operation.key);
                if (!store.deleteKey(operation.root, operation.key)) throw RegError(regerr::NoAccess, "Der Schlüssel kann nicht gelöscht werden.");
            }
            return;
    }
}

}  // namespace

void applyOperation(RegStore& store, const RegOperation& operation) {
    try {
        apply(store, operation);
    } catch (const RegError& error) {
        if (operation.line == 0) throw;
        throw RegError(error.number, "Zeile " + std::to_string(operation.line) + ": " + error.what());
    }
}

void applyOperations(RegStore& store, const std::vector<RegOperation>& operations) {
    store.transaction([&] {
        for (const RegOperation& operation : operations) applyOperation(store, operation);
    });
}

bool deleteTree(RegStore& store, Root root, std::string_view key) {
    if (static_cast<std::size_t>(std::count(key.begin(), key.end(), '\\')) > MaxKeyDepth) throwTooDeep();
    bool done = true;
    for (const std::string& name : store.subKeys(root, key)) {
        done = deleteTree(store, root, key.empty() ? name : std::string(key) + "\\" + name) && done;
    }
    if (!key.empty()) return store.deleteKey(root, key) && done;
    for (const NamedValue& entry : store.values(root, key)) done = store.deleteValue(root, key, entry.name) && done;
    return done;
}

}  // namespace brenvik
