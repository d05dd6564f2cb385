// The shell's tests need a QApplication around them.
#include <gtest/gtest.h>

#include <QApplication>

#include "shell/widgets/Colours.h"

int main(int argc, char** argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM")) qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    brenvik::setColourMode(application, brenvik::ColourMode::Light);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
