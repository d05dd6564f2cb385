// The colour scheme of the settings.
#include <gtest/gtest.h>

#include <QApplication>

#include "shell/widgets/Colours.h"

namespace brenvik::test {
namespace {

TEST(ColourScheme, NamesOfTheSetting) {
    EXPECT_EQ(colourModeOf("Hell"), ColourMode::Light);
    EXPECT_EQ(colourModeOf("Dunkel"), ColourMode::Dark);
    for (const char* other : {"System", "", "dunkel", "Rosa"}) EXPECT_EQ(colourModeOf(other), ColourMode::System) << other;
}

// The desktop of the tests is a light one.
TEST(ColourScheme, GoesBackToTheDesktopsOwn) {
    for (const ColourMode mode : {ColourMode::Dark, ColourMode::System, ColourMode::Dark, ColourMode::Light}) {
        setColourMode(*qApp, mode);
        EXPECT_EQ(isDark(qApp->palette()), mode == ColourMode::Dark);
        const int ground = qApp->palette().color(QPalette::Base).lightness();
        for (const QColor& text : {warningColour(), foundColour(), qApp->palette().color(QPalette::Text), qApp->palette().color(QPalette::Link)})
            EXPECT_GT(std::abs(text.lightness() - ground), 60) << "cannot be read";
    }
}

}  // namespace
}  // namespace brenvik::test
