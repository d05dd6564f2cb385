#include "registry/RegOperations.h"

#include "frame/Errors.h"

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
                if (!deleteTree(store, operation.root, operation.key)) throw RegError(regerr::NoAccess, "Der Schlüssel kann nicht gelöscht werden.");
            }
            return;
    }
}

}  // namespace

void applyOperations(RegStore& store, const std::vector<RegOperation>& operations) {
    store.transaction([&] {
        for (const RegOperation& operation : operations) {
            try {
                apply(store, operation);
            } catch (const RegError& error) {
                if (operation.line == 0) throw;
                throw RegError(error.number, "Zeile " + std::to_string(operation.line) + ": " + error.what());
            }
        }
    });
}

bool deleteTree(RegStore& store, Root root, std::string_view key) {
    bool done = true;
    for (const std::string& name : store.subKeys(root, key)) {
        done = deleteTree(store, root, key.empty() ? name : std::string(key) + "\\" + name) && done;
    }
    if (!key.empty()) return store.deleteKey(root, key) && done;
    for (const NamedValue& entry : store.values(root, key)) done = store.deleteValue(root, key, entry.name) && done;
    return done;
}

}  // namespace brenvik
