// The search for Tips: its condition, and what it finds.
#include <gtest/gtest.h>

#include "Welt.h"
#include "tipdb/Suchen.h"

namespace brenvik::test {
namespace {

TEST(Suchen, bedingung) {
    const std::pair<Suchauftrag, const char*> cases[] = {
        {{"no", {true, true, true}, false}, "Wertname Like '%no%' or Überschrift Like '%no%' or Beschreibung Like '%no%'"},
        {{"a b", {false, true, false}, true}, "Überschrift = 'a b'"},
        {{"x", {true, false, true}, true}, "Wertname = 'x' or Beschreibung = 'x'"},
        {{"it's", {true, false, false}, false}, "Wertname Like '%it's%'"},
        {{"x", {false, false, false}, false}, ""},
        {{"", {true, true, true}, false}, ""},
    };
    for (const auto& [order, condition] : cases) EXPECT_EQ(suchBedingung(order), condition);
}

TEST(Suchen, headRowsInTheOrderOfTheirNumbers) {
    Welt w;
    w.loadFixture("jet4/RegDaten.mdb");
    const auto numbers = [&](const Suchauftrag& order) {
        std::vector<Suchtreffer> hits{{1, "left over"}};
        DBSuchen(w.ctx, suchBedingung(order), hits);
        std::string text;
        for (const Suchtreffer& hit : hits) text += std::to_string(hit.Index) + " ";
        return text;
    };
    EXPECT_EQ(numbers({"no", {true, false, false}, false}), "5 21 25 26 ");    // 6, 9 and 22 are further entries
    EXPECT_EQ(numbers({"versteckte dateien anzeigen", {false, true, false}, true}), "3 29 ");
    EXPECT_EQ(numbers({"versteckte", {false, true, false}, true}), "");
    EXPECT_EQ(numbers({"", {true, true, true}, false}), "");
    w.port.expectBox("RS.Source: Select Index", Answer::No);
    EXPECT_EQ(numbers({"it's", {true, true, true}, false}), "");
}

}  // namespace
}  // namespace brenvik::test
