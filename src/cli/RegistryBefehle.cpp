// registry read | list | write | delete
#include <algorithm>
#include <iostream>
#include <nlohmann/json.hpp>

#include "cli/Befehle.h"
#include "frame/Texte.h"
#include "registry/ValueOperations.h"

namespace brenvik::cli {
namespace {

using nlohmann::ordered_json;

// Elements of a REG_MULTI_SZ stand one in a line.
std::string lines(std::string text) {
    std::replace(text.begin(), text.end(), '\0', '\n');
    return text;
}

std::int32_t typeNumber(Context& ctx, const std::string& text) {
    for (std::int32_t type = 0; type <= 10; ++type)
        if (text == std::to_string(type) || text == DatenTypText(ctx, type)) return type;
    return -1;
}

ordered_json valueJson(Context& ctx, const std::string& name, std::int32_t type, const std::string& data) {
    ordered_json value{{"name", name}, {"type", DatenTypText(ctx, type)}};
    if (type == 7) {
        value["data"] = ordered_json::array();
        std::size_t from = 0;
        while (!data.empty() && from <= data.size()) {
            const auto end = std::min(data.find('\0', from), data.size());
            value["data"].push_back(data.substr(from, end - from));
            from = end + 1;
        }
    } else {
        value["data"] = data;
    }
    return value;
}

int readValue(Programm& programm, const std::string& path, bool json) {
    Context& ctx = programm.context();
    ctx.objBVKReg.SetPath(ctx.strRechnername, path);
    const auto raw = ctx.objBVKReg.ReadRaw();
    if (!raw) {
        std::cerr << "Der Wert ist nicht vorhanden: " << path << "\n";
        return 1;
    }
    const std::string text = toText(*raw);
    if (json)
        std::cout << valueJson(ctx, path.substr(path.find_last_of('\\') + 1), static_cast<std::int32_t>(raw->type), text).dump(2) << "\n";
    else
        std::cout << lines(text) << "\n";
    return 0;
}

int listKey(Programm& programm, std::string path, bool json) {
    Context& ctx = programm.context();
    if (!path.ends_with('\\')) path += '\\';
    ctx.objBVKReg.SetPath(ctx.strRechnername, path);
    if (!ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK)) {
        std::cerr << "Der Schlüssel ist nicht vorhanden: " << path << "\n";
        return 1;
    }
    const auto keys = ctx.objBVKReg.EnumSubKeys();
    const auto values = ctx.objBVKReg.ListRaw();
    if (json) {
        ordered_json out{{"keys", keys}, {"values", ordered_json::array()}};
        for (const NamedValue& v : values)
            out["values"].push_back(valueJson(ctx, v.name.text(), static_cast<std::int32_t>(v.value.type), toText(v.value)));
        std::cout << out.dump(2) << "\n";
        return 0;
    }
    for (const std::string& key : keys) std::cout << key << "\\\n";
    for (const NamedValue& v : values) {
        std::string text = toText(v.value);
        std::replace(text.begin(), text.end(), '\0', '|');
        std::cout << (v.name.isUnnamed() ? std::string("(Standard)") : v.name.text()) << "\t"
                  << DatenTypText(ctx, static_cast<std::int32_t>(v.value.type)) << "\t" << text << "\n";
    }
    return 0;
}

int writeValue(Programm& programm, const std::string& path, const std::string& typeName, std::string data) {
    Context& ctx = programm.context();
    const std::int32_t type = typeNumber(ctx, typeName);
    if (type < 0) {
        std::cerr << "Unbekannter Datentyp: " << typeName << "\n";
        return 2;
    }
    if (type == 7) std::replace(data.begin(), data.end(), '\n', '\0');
    return SaveRegistryKey(ctx, path, data == DelKey ? std::string() : data, static_cast<std::int16_t>(type), ctx.strRechnername) ? 0 : 1;
}

int deletePath(Programm& programm, const std::string& path) {
    Context& ctx = programm.context();
    const bool key = path.ends_with('\\');
    ctx.objBVKReg.SetPath(ctx.strRechnername, path);
    if (key ? !ctx.objBVKReg.Exists(KEY_QUERY_VALUE_MASK) : !ctx.objBVKReg.ReadRaw().has_value()) {
        std::cerr << (key ? "Der Schlüssel" : "Der Wert") << " ist nicht vorhanden: " << path << "\n";
        return 1;
    }
    if (key && !ctx.port.ask("Soll der Schlüssel " + path + " gelöscht werden?")) return 1;
    if (ctx.objBVKReg.Delete()) return 0;
    std::cerr << (key ? "Der Schlüssel hat Unterschlüssel und wurde nicht gelöscht: " : "Der Wert wurde nicht gelöscht: ") << path << "\n";
    return 1;
}

// Errors of the service in their own words, for the terminal.
template <class Work> std::function<int(Programm&)> reported(Work work) {
    return [work](Programm& programm) {
        try {
            return work(programm);
        } catch (const RegError& error) {
            const int text = error.number == regerr::NoKey ? 1 : error.number == regerr::NoRoot ? 2 : error.number == regerr::NoAccess ? 7 : -1;
            std::cerr << (text < 0 ? std::string(error.what()) : strBVKFehler(text)) << "\n";
            return 1;
        }
    };
}

}  // namespace

void addRegistryBefehle(CLI::App& app, Aufruf& call) {
    auto* group = app.add_subcommand("registry", "Registry unmittelbar lesen und ändern");
    group->require_subcommand(1);
    auto path = std::make_shared<std::string>();
    auto type = std::make_shared<std::string>();
    auto data = std::make_shared<std::string>();
    const auto withPath = [&](const char* name, const char* text) {
        auto* command = group->add_subcommand(name, text);
        command->add_option("PATH", *path, "Pfad, z.B. HKCU\\Control Panel\\Desktop\\Wallpaper; mit \\ am Ende ist der Schlüssel gemeint")->required();
        return command;
    };
    withPath("read", "Einen Wert ausgeben")->callback([&call, path] {
        call.run = reported([&call, path](Programm& p) { return readValue(p, *path, call.json); });
    });
    withPath("list", "Unterschlüssel und Werte eines Schlüssels ausgeben")->callback([&call, path] {
        call.run = reported([&call, path](Programm& p) { return listKey(p, *path, call.json); });
    });
    auto* write = withPath("write", "Einen Wert schreiben");
    write->add_option("TYPE", *type, "REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ oder die Nummer")->required();
    write->add_option("DATA", *data, "Daten als Text; bei REG_MULTI_SZ ein Element je Zeile")->required();
    write->callback([&call, path, type, data] {
        call.run = reported([path, type, data](Programm& p) { return writeValue(p, *path, *type, *data); });
    });
    withPath("delete", "Einen Wert oder einen Schlüssel ohne Unterschlüssel löschen")->callback([&call, path] {
        call.run = reported([path](Programm& p) { return deletePath(p, *path); });
    });
}

}  // namespace brenvik::cli
