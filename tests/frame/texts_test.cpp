#include <gtest/gtest.h>

#include "frame/Errors.h"
#include "frame/text/Texts.h"

using namespace brenvik;

namespace {

struct Table {
    const char* name;
    const std::string& (*text)(int);
    int first, last;
    std::uint64_t checksum;  // FNV-1a over every text with "\n" behind it
};

class TextTables : public ::testing::TestWithParam<Table> {};

}  // namespace

TEST_P(TextTables, HoldsExactlyItsTexts) {
    const Table& table = GetParam();
    std::uint64_t sum = 0xcbf29ce484222325;
    for (int index = table.first; index <= table.last; ++index) {
        for (const char c : table.text(index) + "\n") sum = (sum ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    }
    EXPECT_EQ(sum, table.checksum);
    for (const int outside : {table.first - 1, table.last + 1, -2147483647 - 1, 2147483647}) {
        try {
            table.text(outside);
            ADD_FAILURE() << "index " << outside << " has a text";
        } catch (const NumberedError& error) {
            EXPECT_EQ(error.number, 9);
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Every, TextTables, ::testing::Values(
    Table{"strBVKTexte", strBVKTexte, 0, 250, 0x69947a27f67a8cae},
    Table{"strBVKButtons", strBVKButtons, 0, 34, 0xd2555174794921bb},
    Table{"strBVKToolbar", strBVKToolbar, 1, 17, 0x4e4172110c5d5aa9},
    Table{"strBVKTips", strBVKTips, 0, 24, 0x1c8d66976f855a63},
    Table{"strBVKBS", strBVKBS, 0, 5, 0xe356ac5add8af28c},
    Table{"strBVKFehler", strBVKFehler, 0, 18, 0xcd6949c4301aefab},
    Table{"strRootKeys", strRootKeys, 0, 5, 0x8dd246fceb792050},
    Table{"strPanelArten", strPanelArten, 0, 10, 0xeecf3cd746238be1}),
    [](const auto& instance) { return instance.param.name; });
