// The nine tabs of the tree, as indented text.
#include "tipengine/EngineFixture.h"

namespace brenvik::test {
namespace {

std::string drawn(const MainWindow& f, int node = 0, int depth = 0) {
    std::string text = std::string(static_cast<std::size_t>(depth), ' ') + f.tvBVKDB[static_cast<std::size_t>(node)].text + "\n";
    for (int child : displayOrder(f, node)) text += drawn(f, child, depth + 1);
    return text;
}

const std::vector<Zeile> Tipps = {
    {.Index = 10, .Überschrift = "Ärger", .Gruppen = "1,3", .Systems = "XP"},
    {.Index = 11, .Überschrift = "Zebra", .Gruppen = "1", .NeuInVersion = "1.2.18", .Systems = "95,XP"},
    {.Index = 12, .Überschrift = "apfel", .Gruppen = "3,3", .NeuInVersion = "0", .Systems = "NT"},
};
// 1 > (2, 3); 4 on top, last
const std::vector<TreeRow> Tree = {{1, 1, 1}, {2, 2, 2}, {2, 2, 3}, {1, 1, 4}};

TEST(Tree, TabsShowWhatTheyShould) {
    EngineFixture p(Tipps, Tree, 4);
    const struct {
        int tabs;
        const char* baum;
    } cases[] = {
        {1, "Brenvik\n Gruppe 1\n  Ärger\n  Gruppe 3\n   apfel\n   apfel\n   Ärger\n  Zebra\n Gruppe 4\n"},
        {2, "Brenvik\n apfel\n Ärger\n Zebra\n"},
        {3, "Brenvik\n Gruppe 1\n  Zebra\n Gruppe 4\n"},
        {4, "Brenvik\n Gruppe 1\n Gruppe 4\n"},   // a group whose sub-groups all went stays
        {6, "Brenvik\n Gruppe 1\n  Gruppe 3\n   apfel\n   apfel\n Gruppe 4\n"},
        {8, "Brenvik\n 1.0.0\n  Ärger\n 1.2.18\n  Zebra\n"},
        {9, "Brenvik\n Gruppe 1\n  Ärger\n  Gruppe 3\n   Ärger\n  Zebra\n Gruppe 4\n"},
    };
    for (const auto& given : cases) {
        p.engine->tree().selectTab(given.tabs);
        EXPECT_EQ(drawn(p.windows()), given.baum) << given.tabs;
    }
    EXPECT_EQ(p.windows().sbrBVK[1], "Einträge: 2");
    EXPECT_FALSE(p.port.waiting());
}

TEST(Tree, AClickOnAGroupAndOnTheRoot) {
    EngineFixture p(Tipps, Tree, 4);
    p.show("Zebra");
    EXPECT_EQ(p.windows().sbrBVK[2], "Index: 11");
    EXPECT_FALSE(p.windows().fraBVKLogo);
    p.engine->tree().selectNode(1);
    EXPECT_EQ(p.windows().txtInfo, "Text 1");
    EXPECT_TRUE(p.windows().fraBVKLogo && p.windows().panels.empty());
    EXPECT_FALSE(p.windows().KeySave);
    p.engine->tree().selectNode(0);
    EXPECT_FALSE(p.windows().txtInfoSichtbar);
    EXPECT_EQ(p.ctx->aktuellerTipp.HilfeNummer, 125);
}

// A heading that two Tips share always shows the first; a number shows its own, also of a Tip that stands in no group.
TEST(Tree, NumbersMeanTheirOwnTip) {
    EngineFixture p({{.Index = 10, .Überschrift = "Gleich", .Wertname = "erster"}, {.Index = 11, .Überschrift = "Gleich", .Wertname = "zweiter"},
             {.Index = 12, .Überschrift = "Gleich", .Wertname = "ohne Gruppe", .Gruppen = "7"}});
    const auto shown = [&] { return p.ctx->aktuellerTipp.Eintrag.at(1).Wertname + " " + p.windows().sbrBVK[2]; };
    const char* const wanted[] = {"erster Index: 10", "zweiter Index: 11", "ohne Gruppe Index: 12"};
    for (const int number : {11, 12, 10, 12, 11}) {
        EXPECT_TRUE(p.engine->tree().showTipByNumber(number));
        EXPECT_EQ(shown(), wanted[number - 10]);
        EXPECT_EQ(p.windows().tvBVKDB.at(static_cast<std::size_t>(p.windows().selectedNode)).nummer, number);
    }
    p.engine->tree().selectNode(p.windows().selectedNode);   // a click is by heading
    EXPECT_EQ(shown(), wanted[0]);
    EXPECT_FALSE(p.engine->tree().showTipByNumber(13));
}

TEST(Tree, BrokenTreeRowsAreReportedAndTheRestStands) {
    EngineFixture p(Tipps, {{1, 1, 1}, {9, 1, 2}, {1, 77, 3}, {1, 1, 4}}, 4, true);
    EXPECT_EQ(drawn(p.windows()), "Brenvik\n Gruppe 1\n  Ärger\n  Zebra\n Gruppe 4\n");
    ASSERT_EQ(p.port.boxes.size(), 1u);   // one for the step, however many rows
    for (const char* part : {"in der Funktion: TreeEinlesen aufgetreten mit der Fehlernummer: 9\r\n",
                             "\r\n\r\nTabelle Treebaum: 2 von 4 Zeilen haben im Baum keinen Platz und fehlen darin, zuerst die mit der Nummer 1."})
        EXPECT_NE(p.port.lastBox().find(part), std::string::npos) << p.port.lastBox();
}

// A group that went leaves its level behind; rows that hang themselves there build no deeper tree than any.
TEST(Tree, ANodeThatWentMakesTheTreeNoDeeper) {
    std::vector<TreeRow> rows{{1, 2, 1}, {3, 3, 1}, {4, 4, 1}};
    for (int k = 0; k < 23; ++k) rows.insert(rows.end(), {{1, 1, 2}, {5, 0, 1}, {2, 1, 1}, {2, 2, 1}, {3, 3, 1}, {4, 4, 1}});   // the first of them goes
    EngineFixture p(Tipps, rows, 4, true);
    EXPECT_EQ(p.port.boxes.size(), 1u);
    for (std::size_t k = 0; k < p.windows().tvBVKDB.size(); ++k) {
        int levels = 0;
        for (int node = static_cast<int>(k); node > 0; node = p.windows().tvBVKDB[static_cast<std::size_t>(node)].parent) ++levels;
        ASSERT_LE(levels, 101);   // the Tips of the last group
    }
}

// What was to be saved and could not be stays on screen, and so does the Tip: on every way out of it.
TEST(Tree, ARefusedSaveKeepsTheTipOnScreen) {
    EngineFixture p({{.Index = 1, .Überschrift = "Zahl", .Ausgabeart = 2}, {.Index = 2, .Überschrift = "Andere"}});
    p.put("HKCU\\Software\\Probe\\Wert", 4, "7");
    p.show("Zahl");
    const int node = p.windows().selectedNode;
    const std::function<void()> ways[] = {[&] { p.engine->tree().selectNode(0); },
                                          [&] { EXPECT_FALSE(p.engine->tree().showTipByHeading("Andere")); },
                                          [&] { EXPECT_FALSE(p.engine->tree().TippOeffnen("Andere")); },
                                          [&] { p.engine->tree().mnuandereDBLoad(); },
                                          [&] { p.engine->tree().mnuBVKDBLoad(); }};
    p.engine->input().userText(0, "keine Zahl");
    for (const auto& leave : ways) {
        p.port.expectBox("Sie haben Einstellungen geändert", Answer::Yes).expectBox("Erwartet wird eine Hexadezimalzahl");
        leave();
        EXPECT_TRUE(p.port.done());
        EXPECT_EQ(p.panel().text, "keine Zahl");
        EXPECT_EQ(p.windows().selectedNode, node);
        EXPECT_TRUE(p.ctx->blnGeaendert);
    }
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::No);
    EXPECT_FALSE(p.engine->tree().TippOeffnen("Gibt es nicht"));
    EXPECT_EQ(p.panel().text, "7");   // declined: what stands there, at once
    p.engine->input().userText(0, "8");
    p.port.expectBox("Sie haben Einstellungen geändert", Answer::No);
    p.engine->tree().selectNode(0);
    EXPECT_TRUE(p.windows().panels.empty());
    EXPECT_EQ(p.get("HKCU\\Software\\Probe\\Wert"), "4:7");
}

// Whatever comes after what; "Fremd" is a Tip for another system, loaded but not shown.
TEST(Tree, CommandsOfATipOnlyWhereThereIsOne) {
    EngineFixture p({{.Index = 1, .Überschrift = "Tipp", .Standardwert = "1"}, {.Index = 2, .Überschrift = "Fremd", .Standardwert = "1", .Systems = "95"}});
    p.ctx->einstellungen.BSSystemAktiv = true;
    const auto flags = [&] { return std::string(p.windows().Default ? "default " : "") + (p.windows().mnuBSFreigabe ? "systems" : ""); };
    for (const auto& [node, expected] : std::vector<std::pair<std::string, std::string>>{
             {"Brenvik", ""}, {"Fremd", "systems"}, {"Gruppe 1", ""}, {"Tipp", "default systems"}, {"Fremd", "systems"}, {"Tipp", "default systems"}, {"Brenvik", ""}}) {
        const auto& tree = p.windows().tvBVKDB;
        const auto found = std::find_if(tree.begin(), tree.end(), [&](const TreeNode& n) { return n.text == node; });
        ASSERT_NE(found, tree.end()) << node;
        p.engine->tree().selectNode(static_cast<int>(found - tree.begin()));
        EXPECT_EQ(flags(), expected) << node;
    }
}

}  // namespace
}  // namespace brenvik::test
