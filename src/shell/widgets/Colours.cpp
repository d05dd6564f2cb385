#include "shell/widgets/Colours.h"

#include <QPainter>
#include <QProxyStyle>
#include <QStyleOption>

namespace brenvik {
namespace {

// The style outlines its boxes with a darker shade of the window: on a dark ground an empty box would not be seen.
class VisibleBoxes : public QProxyStyle {
public:
    VisibleBoxes() : QProxyStyle(QStringLiteral("Fusion")) {}
    void drawPrimitive(PrimitiveElement element, const QStyleOption* option, QPainter* painter, const QWidget* widget) const override {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        if ((element != PE_IndicatorCheckBox && element != PE_IndicatorRadioButton) || !isDark(QApplication::palette())) return;
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->setPen(QApplication::palette().color(QPalette::PlaceholderText));
        painter->setBrush(Qt::NoBrush);
        const QRectF edge = QRectF(option->rect).adjusted(0.5, 0.5, -0.5, -0.5);
        if (element == PE_IndicatorCheckBox)
            painter->drawRoundedRect(edge, 1.5, 1.5);
        else
            painter->drawEllipse(edge);
        painter->restore();
    }
};

QPalette lightPalette() {
    QPalette p(QColor(0xef, 0xf0, 0xf2), QColor(0xf6, 0xf7, 0xf8));
    p.setColor(QPalette::WindowText, QColor(0x1c, 0x1f, 0x23));
    p.setColor(QPalette::Text, QColor(0x1c, 0x1f, 0x23));
    p.setColor(QPalette::ButtonText, QColor(0x1c, 0x1f, 0x23));
    p.setColor(QPalette::Base, Qt::white);
    p.setColor(QPalette::AlternateBase, QColor(0xf1, 0xf4, 0xf8));
    p.setColor(QPalette::Highlight, QColor(0x1f, 0x6f, 0xb8));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, QColor(0xff, 0xff, 0xe6));
    p.setColor(QPalette::ToolTipText, QColor(0x1c, 0x1f, 0x23));
    p.setColor(QPalette::PlaceholderText, QColor(0x75, 0x7b, 0x84));
    p.setColor(QPalette::Link, QColor(0x1f, 0x6f, 0xb8));
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor(0x8b, 0x90, 0x98));
    return p;
}

QPalette darkPalette() {
    QPalette p(QColor(0x41, 0x47, 0x4f), QColor(0x35, 0x3a, 0x41));
    p.setColor(QPalette::WindowText, QColor(0xe6, 0xe8, 0xeb));
    p.setColor(QPalette::Text, QColor(0xe6, 0xe8, 0xeb));
    p.setColor(QPalette::ButtonText, QColor(0xe6, 0xe8, 0xeb));
    p.setColor(QPalette::BrightText, Qt::white);
    p.setColor(QPalette::Base, QColor(0x1c, 0x1f, 0x23));
    p.setColor(QPalette::AlternateBase, QColor(0x22, 0x26, 0x2b));
    p.setColor(QPalette::Highlight, QColor(0x2f, 0x6d, 0xa8));
    p.setColor(QPalette::HighlightedText, Qt::white);
    p.setColor(QPalette::ToolTipBase, QColor(0x3a, 0x3f, 0x46));
    p.setColor(QPalette::ToolTipText, QColor(0xe6, 0xe8, 0xeb));
    p.setColor(QPalette::PlaceholderText, QColor(0x9a, 0xa1, 0xaa));
    p.setColor(QPalette::Link, QColor(0x7f, 0xbb, 0xf2));
    for (auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        p.setColor(QPalette::Disabled, role, QColor(0x96, 0x9c, 0xa5));
    return p;
}

}  // namespace

// A dark palette of the desktop is taken as it is; in place of its light one comes our own.
void setColourMode(QApplication& application, ColourMode mode) {
    application.setStyle(new VisibleBoxes);
    if (mode == ColourMode::System) {
        application.setPalette(QPalette());     // back to the desktop's, whatever was chosen before
        if (isDark(application.palette())) return;
    }
    application.setPalette(mode == ColourMode::Dark ? darkPalette() : lightPalette());
}

ColourMode colourModeOf(std::string_view colourScheme) {
    if (colourScheme == "Hell") return ColourMode::Light;
    return colourScheme == "Dunkel" ? ColourMode::Dark : ColourMode::System;
}

bool isDark(const QPalette& palette) { return palette.color(QPalette::Window).lightness() < 128; }

QColor warningColour() { return isDark(QApplication::palette()) ? QColor(0xff, 0x85, 0x7c) : QColor(0xc8, 0x10, 0x10); }

QColor foundColour() { return isDark(QApplication::palette()) ? QColor(0x8f, 0xc1, 0xff) : QColor(0x01, 0x00, 0x80); }

QColor accentColour(const QPalette& palette) { return isDark(palette) ? QColor(0x6f, 0xb4, 0xf0) : QColor(0x1f, 0x6f, 0xb8); }

QColor statusColour(StatusColour colour) {
    switch (colour) {
        case StatusColour::Gefunden: return foundColour();
        case StatusColour::Missing: return warningColour();
        case StatusColour::Normal: break;
    }
    return QApplication::palette().color(QPalette::ButtonText);
}

void setTextColour(QWidget& widget, const QColor& colour) {
    QPalette own;
    if (colour.isValid()) {
        own.setColor(QPalette::WindowText, colour);
        own.setColor(QPalette::Text, colour);
    }
    widget.setPalette(own);
}

}  // namespace brenvik
