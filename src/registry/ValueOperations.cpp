#include "registry/ValueOperations.h"

#include <algorithm>

#include "frame/Reports.h"
#include "frame/text/Texts.h"
#include "registry/store/RegLimits.h"

namespace brenvik {

namespace {

constexpr int TextUnknownType = 216;
constexpr const char* typeNames[] = {"REG_NONE",     "REG_SZ",   "REG_EXPAND_SZ", "REG_BINARY",        "REG_DWORD",
                                     "REG_DWORD_BIG_ENDIAN", "REG_LINK", "REG_MULTI_SZ",  "REG_RESOURCE_LIST", "REG_FULL_RESOURCE_DESCRIPTOR",
                                     "REG_RESOURCE_REQUIREMENTS_LIST"};

}  // namespace

std::string ReadRegistryKey(RegistryContext& ctx, const std::string& path, const std::string& defaultText,
                            const std::optional<std::string>& machine) {
    const std::string machineName = machine.value_or(ctx.strLokalerRechner);
    ProcTrace trace(ctx.trace, "ReadRegistryKey");
    trace.p(path).p(defaultText).p(machineName);
    try {
        ctx.objBVKReg.SetPath(machineName, path);
        const std::string result = ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK) ? ctx.objBVKReg.ReadValue(false) : defaultText;
        trace.r(traceValue(path, result));
        return result;
    } catch (const std::exception& error) {
        RegFehlermeldungen(ctx, errorNumberOf(error));
        trace.noEnd();
        return {};
    }
}

bool SaveRegistryKey(RegistryContext& ctx, const std::string& path, const std::string& value, std::int16_t type,
                     const std::optional<std::string>& machine) {
    const std::string machineName = machine.value_or(ctx.strLokalerRechner);
    ProcTrace trace(ctx.trace, "SaveRegistryKey");
    trace.p(path).p(traceValue(path, value)).p(type).p(machineName);
    try {
        ctx.objBVKReg.SetPath(machineName, path);
        if (value == DelKey) {
            ctx.objBVKReg.Delete();
        } else {
            ctx.objBVKReg.WriteValue(value, type);
        }
        trace.r(true);
        return true;
    } catch (const std::exception& error) {
        RegFehlermeldungen(ctx, errorNumberOf(error));
        trace.noEnd();
        return false;
    }
}

std::string DatenTypText(FrameContext& ctx, std::int32_t type) {
    ProcTrace trace(ctx.trace, "DatenTypText");
    trace.p(type);
    const bool known = type >= 0 && type < static_cast<std::int32_t>(std::size(typeNames));
    const std::string name = known ? typeNames[type] : strBVKTexte(TextUnknownType);
    trace.r(name);
    return name;
}

std::string NetzRegPfad(FrameContext& ctx, const std::string& root) {
    ProcTrace trace(ctx.trace, "NetzRegPfad");
    trace.p(root);
    const std::string path = root == "HKEY_CURRENT_USER" && !ctx.blnLokal ? "HKEY_USERS\\" + ctx.strUserSID : root;
    trace.r(path);
    return path;
}

namespace {

// One walk bottom-up. Failures are reported when it is over, since a box may stand long and others wait for the store.
class DeletionRun {
public:
    DeletionRun(RegistryContext& ctx, std::string machine) : ctx_(ctx), machine_(std::move(machine)) {}

    void run(std::string& path, bool deleteSelf) {
        ProcTrace trace(ctx_.trace, "DelUnterKey");
        trace.p(path).p(deleteSelf);
        path += "\\";
        std::vector<std::string> entries;
        const bool isKey = step([&] {
            const std::string key = parseRegPath(path).key;
            if (key.empty()) throw RegError(regerr::NoKey, "Ein Hauptschlüssel wird nicht geleert.");
            if (static_cast<std::size_t>(std::count(key.begin(), key.end(), '\\')) > MaxKeyDepth) throwTooDeep();
        });
        if (!isKey) return;
        step([&] {
            ctx_.objBVKReg.SetPath(machine_, path);
            for (const std::string& name : ctx_.objBVKReg.EnumSubKeys()) entries.push_back(path + name);
        });
        for (std::string& entry : entries) run(entry, true);
        if (!deleteSelf) return;
        trace.note("Lösche Schlüssel: " + path);
        step([&] {
            ctx_.objBVKReg.SetPath(machine_, path);
            ctx_.objBVKReg.Delete();
        });
    }

    bool step(const std::function<void()>& work) {
        try {
            work();
            return true;
        } catch (const std::exception& error) {
            failures_.push_back(errorNumberOf(error));
            return false;
        }
    }

    void report() {
        for (const std::int32_t number : failures_) {
            std::string name = "DelUnterKey";
            FehlerMeldung(ctx_, name, std::to_string(number));
        }
    }

private:
    RegistryContext& ctx_;
    std::string machine_;
    std::vector<std::int32_t> failures_;
};

// Null: it cannot be written, or not even reached, which the single steps will report.
RegStore* writableStore(BVKRegistry& registry, const std::string& machine, const std::string& path) {
    try {
        registry.SetPath(machine, path);
        RegStore& store = registry.selectedStore();
        return store.writable() ? &store : nullptr;
    } catch (const RegError&) {
        return nullptr;
    }
}

}  // namespace

// All that can be deleted goes in one transaction: a hive file is written as a whole each time.
void DelUnterKey(RegistryContext& ctx, std::string& path, bool deleteSelf, const std::optional<std::string>& machine) {
    const std::string machineName = machine.value_or(ctx.strRechnername);
    const std::string whole = path + "\\";
    DeletionRun gang(ctx, machineName);
    if (RegStore* const store = writableStore(ctx.objBVKReg, machineName, path)) {
        gang.step([&] { store->transaction([&] { gang.run(path, deleteSelf); }); });
    } else {
        gang.run(path, deleteSelf);
    }
    path = whole;   // also if there was no beginning
    gang.report();
}

}  // namespace brenvik
