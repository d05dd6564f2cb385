#include "registry/ValueOperations.h"

#include "frame/Reports.h"
#include "frame/Texte.h"

namespace brenvik {

namespace {

constexpr int TextUnknownType = 216;
constexpr const char* typeNames[] = {"REG_NONE",     "REG_SZ",   "REG_EXPAND_SZ", "REG_BINARY",        "REG_DWORD",
                                     "REG_DWORD_BIG_ENDIAN", "REG_LINK", "REG_MULTI_SZ",  "REG_RESOURCE_LIST", "REG_FULL_RESOURCE_DESCRIPTOR",
                                     "REG_RESOURCE_REQUIREMENTS_LIST"};

}  // namespace

std::string ReadRegistryKey(RegistryContext& ctx, const std::string& path, const std::string& defaultText,
                            const std::optional<std::string>& machine) {
    const std::string rechner = machine.value_or(ctx.strLokalerRechner);
    ProcTrace trace(ctx.trace, "ReadRegistryKey");
    trace.p(path).p(defaultText).p(rechner);
    try {
        ctx.objBVKReg.SetPath(rechner, path);
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
    const std::string rechner = machine.value_or(ctx.strLokalerRechner);
    ProcTrace trace(ctx.trace, "SaveRegistryKey");
    trace.p(path).p(traceValue(path, value)).p(type).p(rechner);
    try {
        ctx.objBVKReg.SetPath(rechner, path);
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

void DelUnterKey(RegistryContext& ctx, std::string& path, bool deleteSelf, const std::optional<std::string>& machine) {
    const std::string rechner = machine.value_or(ctx.strRechnername);
    ProcTrace trace(ctx.trace, "DelUnterKey");
    trace.p(path).p(deleteSelf);
    path += "\\";
    const bool isKey = reportAndGoOn(ctx, "DelUnterKey", [&] {
        if (parseRegPath(path).key.empty()) throw RegError(regerr::NoKey, "Ein Hauptschlüssel wird nicht geleert.");
    });
    if (!isKey) return;
    std::vector<std::string> entries;
    reportAndGoOn(ctx, "DelUnterKey", [&] {
        ctx.objBVKReg.SetPath(rechner, path);
        for (const std::string& name : ctx.objBVKReg.EnumSubKeys()) entries.push_back(path + name);
    });
    for (std::string& entry : entries) DelUnterKey(ctx, entry, true, rechner);
    if (deleteSelf) {
        trace.note("Lösche Schlüssel: " + path);
        reportAndGoOn(ctx, "DelUnterKey", [&] {
            ctx.objBVKReg.SetPath(rechner, path);
            ctx.objBVKReg.Delete();
        });
    }
}

}  // namespace brenvik
