#include "Generator.h"

#include <algorithm>

#include "tipengine/Panel.h"

namespace brenvik::tipbuild {

namespace {

constexpr std::int64_t Groups = 20;
constexpr std::size_t MostValues = 10;

Zeile rowOf(std::int64_t index, std::int64_t group) {
    Zeile z;
    z.Index = index;
    z.Gruppen = {group, group % Groups + 1};
    z.Hauptschlüssel = index % 3 == 0 ? "HKLM" : "HKCU";
    z.Schlüssel = "Software\\Microsoft\\Windows\\CurrentVersion\\Policies\\Explorer\\Bereich " + std::to_string(index % 100);
    if (index % 4 == 0) z.SchlüsselNT = "Software\\Microsoft\\Windows NT\\CurrentVersion\\Bereich " + std::to_string(index % 100);
    z.Wertname = "Einstellung" + std::to_string(index);
    z.Datentyp = index % 2 == 0 ? typ::Dword : typ::Sz;
    z.Ausgabeart = art::CheckBox;
    z.WertEin = "1";
    z.WertAus = index % 5 == 0 ? DelKey : "0";
    z.Anzeigetext = "Einstellung Nummer " + std::to_string(index) + " einschalten";
    if (index % 3 != 0) z.Standardwert = "1";
    z.Win95 = z.Win98 = z.WinME = index % 7 != 0;
    z.WinNT = z.Win2000 = z.WinXP = true;
    z.NeuInVersion = "1.2.0";
    z.Neustart = index % 3;
    z.Beschriftung = "Größe und Verhalten";
    return z;
}

}  // namespace

Stock generated(std::size_t rows) {
    Stock b;
    b.versions = {{{}, "1.2.0", "20.05.2002", "8"}, {{}, "1.2.18", "09.11.2002", "8"}};
    for (std::int64_t g = 1; g <= Groups; ++g) {
        GroupSource group;
        group.nummer = group.sequence = g;
        group.name = "Gruppe " + std::to_string(g);
        group.beschreibung = "Die Einstellungen der Gruppe " + std::to_string(g) + ".";
        group.above = g <= 5 ? 0 : (g - 1) % 5 + 1;
        b.gruppen.push_back(group);
    }
    std::int64_t index = 0;
    for (std::size_t values = MostValues; b.lines.size() < rows; values = values % MostValues + 1) {
        const std::size_t count = std::min(values, rows - b.lines.size());
        const std::int64_t head = ++index, group = head % Groups + 1;
        Zeile first = rowOf(head, group);
        first.Überschrift = "Tipp Nummer " + std::to_string(head) + ": Oberfläche anpassen";
        first.Beschreibung = "Diese Einstellung ändert das Verhalten der Oberfläche an der Stelle " + std::to_string(head) +
                             ". Sie wirkt erst nach einem Neustart des Rechners und läßt sich jederzeit wieder zurücknehmen.";
        first.HilfeNummer = 200 + head % 50;
        first.AnzahlWerte = static_cast<std::int64_t>(count) - 1;
        b.lines.push_back(first);
        for (std::size_t i = 1; i < count; ++i) {
            Zeile further = rowOf(++index, group);
            further.HauptIndex = head;
            b.lines.push_back(further);
        }
    }
    return b;
}

}  // namespace brenvik::tipbau
