#pragma once
// The export commands on a small database and an empty registry, and the files that come out.
#include "export/Export.h"
#include "frame/text/Codepage.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {

constexpr const char* ExportHead =
    "; Info:     RegFile erstellt mit dem Brenvik\n; Version: 1.2.3 ,DB: 1.2.18\n; www.brenvik.example\n; support@brenvik.example\n"
    "; Copyright (C) 2001-2002 Brenvik\n";

struct ExportFixture : EngineFixture {
    explicit ExportFixture(const std::vector<Zeile>& lines, int gruppen = 1) : EngineFixture(lines, gruppen == 1 ? std::vector<TreeRow>{{}} : std::vector<TreeRow>{{}, {1, 1, 2}}, gruppen), exports(*engine, listen) {
        ctx->strProgVersion = "1.2.3";
    }
    // The next file dialog is answered with this name.
    std::string file(const std::string& name) {
        const std::string path = (dir / name).string();
        port.expectFile(path);
        return path;
    }
    // The file of the Tip on screen, its lines closed by LF; told: how many boxes it took.
    std::string regFile(std::size_t boxes = 1) {
        const std::size_t before = port.boxes.size();
        const std::string path = file("tipp.reg");
        port.expectBox("REG-File wurde unter: " + path + " gespeichert");
        if (boxes > 1) port.expectBox("");
        exports.RegFileSave(false);
        EXPECT_EQ(port.boxes.size() - before, boxes) << port.lastBox();
        return content("tipp.reg");
    }
    std::string content(const std::string& name) { return lines(utf8FromAnsi(bytesOf(dir / name))); }
    static std::string lines(std::string text) {
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), std::count(text.begin(), text.end(), '\r'));
        std::erase(text, '\r');
        return text;
    }

    ExportLists listen;
    Export exports;
};

// A value of a list's entry, as if the user had chosen it.
inline TipListValue listValue(const std::string& key, std::int32_t type, const std::string& name, const std::string& text,
                               const std::string& root = "HKEY_CURRENT_USER") {
    TipListValue value;
    value.Hauptschluessel = root;
    value.Unterschluessel = key;
    value.Datentyp = type;
    value.Wertname = name;
    value.Wert = value.gathered.text = text;
    value.PanelArt = art::TextWerte;
    value.gathered.touched = true;
    if (text == "<delkey>")
        value.gathered.geloescht = true;
    else if (type == 1 || type == 2 || type == 3 || type == 4 || type == 7)
        value.gathered.wert = fromText(text, static_cast<std::uint32_t>(type));
    return value;
}

inline TippListEintrag listTip(std::int16_t number, const std::string& title, std::vector<TipListValue> values) {
    TippListEintrag entry;
    entry.Anzahl = std::to_string(values.size() - 1);
    entry.TippNr = number;
    entry.Titel = title;
    entry.Baumpfad = "1";
    entry.Values = std::move(values);
    return entry;
}

}  // namespace brenvik::test
