#pragma once
// Colours that carry a meaning, readable on light and on dark ground, and the choice between the two.
#include <QApplication>
#include <QColor>
#include <QPalette>
#include <QWidget>
#include <string_view>

#include "tipengine/MainWindow.h"

namespace brenvik {

enum class ColourMode { System, Light, Dark };

void setColourMode(QApplication& application, ColourMode mode);
ColourMode colourModeOf(std::string_view colourScheme);     // the setting ColourScheme: "System", "Hell" or "Dunkel"; nonsense is System
bool isDark(const QPalette& palette);
QColor accentColour(const QPalette& palette);

// By the application's palette: while it changes, the widgets take it over one after the other.
QColor statusColour(StatusColour colour);
QColor warningColour();
QColor foundColour();

// Sets the text colour of one widget; invalid: back to the palette's own.
void setTextColour(QWidget& widget, const QColor& colour);

}  // namespace brenvik
