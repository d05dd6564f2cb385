// The nine tabs of the tree, as indented text.
#include "tipengine/Maschinenprobe.h"

namespace brenvik::test {
namespace {

std::string drawn(const Hauptfenster& f, int node = 0, int depth = 0) {
    std::string text = std::string(static_cast<std::size_t>(depth), ' ') + f.tvBVKDB[static_cast<std::size_t>(node)].text + "\n";
    for (int child : displayOrder(f, node)) text += drawn(f, child, depth + 1);
    return text;
}

const std::vector<Zeile> Tipps = {
    {.Index = 10, .Überschrift = "Ärger", .Gruppen = "1,3", .Systeme = "XP"},
    {.Index = 11, .Überschrift = "Zebra", .Gruppen = "1", .NeuInVersion = "1.2.18", .Systeme = "95,XP"},
    {.Index = 12, .Überschrift = "apfel", .Gruppen = "3,3", .NeuInVersion = "0", .Systeme = "NT"},
};
// 1 > (2, 3); 4 on top, last
const std::vector<BaumZeile> Baum = {{1, 1, 1}, {2, 2, 2}, {2, 2, 3}, {1, 1, 4}};

TEST(Baum, ReiterZeigenWasSieSollen) {
    Probe p(Tipps, Baum, 4);
    const struct {
        int reiter;
        const char* baum;
    } faelle[] = {
        {1, "Brenvik\n Gruppe 1\n  Ärger\n  Gruppe 3\n   apfel\n   apfel\n   Ärger\n  Zebra\n Gruppe 4\n"},
        {2, "Brenvik\n apfel\n Ärger\n Zebra\n"},
        {3, "Brenvik\n Gruppe 1\n  Zebra\n Gruppe 4\n"},
        {4, "Brenvik\n Gruppe 1\n Gruppe 4\n"},   // a group whose sub-groups all went stays
        {6, "Brenvik\n Gruppe 1\n  Gruppe 3\n   apfel\n   apfel\n Gruppe 4\n"},
        {8, "Brenvik\n 1.0.0\n  Ärger\n 1.2.18\n  Zebra\n"},
        {9, "Brenvik\n Gruppe 1\n  Ärger\n  Gruppe 3\n   Ärger\n  Zebra\n Gruppe 4\n"},
    };
    for (const auto& fall : faelle) {
        p.engine->selectTab(fall.reiter);
        EXPECT_EQ(drawn(p.fenster()), fall.baum) << fall.reiter;
    }
    EXPECT_EQ(p.fenster().sbrBVK[1], "Einträge: 2");
    EXPECT_FALSE(p.port.waiting());
}

TEST(Baum, KlickAufGruppeUndWurzel) {
    Probe p(Tipps, Baum, 4);
    p.show("Zebra");
    EXPECT_EQ(p.fenster().sbrBVK[2], "Index: 11");
    EXPECT_FALSE(p.fenster().fraBVKLogo);
    p.engine->selectNode(1);
    EXPECT_EQ(p.fenster().txtInfo, "Text 1");
    EXPECT_TRUE(p.fenster().fraBVKLogo && p.fenster().panels.empty());
    EXPECT_FALSE(p.fenster().KeySave);
    p.engine->selectNode(0);
    EXPECT_FALSE(p.fenster().txtInfoSichtbar);
    EXPECT_EQ(p.ctx->aktuellerTipp.HilfeNummer, 125);
}

TEST(Baum, KaputteBaumzeilenWerdenGemeldetUndDerRestSteht) {
    Probe p(Tipps, {{1, 1, 1}, {9, 1, 2}, {1, 77, 3}, {1, 1, 4}}, 4, true);
    EXPECT_EQ(drawn(p.fenster()), "Brenvik\n Gruppe 1\n  Ärger\n  Zebra\n Gruppe 4\n");
    EXPECT_EQ(p.port.boxes.size(), 2u);
}

TEST(Panels, EntladenLaesstNichtsZurueck) {
    Probe p({{.Index = 1, .Überschrift = "Tipp", .Ausgabeart = 5, .Anzeigetext = "A#B", .AnzahlWerte = 2},
             {.Index = 2, .Ausgabeart = 5, .Wertname = "B", .Anzeigetext = "A#B", .HauptIndex = 1},
             {.Index = 3, .Ausgabeart = 1, .Wertname = "C", .HauptIndex = 1}});
    p.show("Tipp");
    EXPECT_EQ(p.ctx->intPanelOption, 1);
    EXPECT_EQ(p.ctx->intPanelCheckBox, 0);
    p.engine->TippsEntladen();
    EXPECT_EQ(p.ctx->intPanelOption, 0);
    EXPECT_TRUE(p.fenster().panels.empty());
    p.engine->userChoose(0, 1);   // a late event of a panel that is gone
    EXPECT_FALSE(p.ctx->blnGeaendert);
}

}  // namespace
}  // namespace brenvik::test
