#pragma once
// Check boxes and option buttons whose captions wrap instead of being cut.
#include <QAbstractButton>
#include <QCheckBox>
#include <QPaintEvent>
#include <QRadioButton>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <algorithm>

namespace brenvik {

template <class Base, QStyle::PrimitiveElement Indicator, QStyle::PixelMetric IndicatorWidth, QStyle::PixelMetric IndicatorHeight>
class WrapButton : public Base {
public:
    explicit WrapButton(QWidget* parent = nullptr) : Base(parent) {
        QSizePolicy policy(QSizePolicy::Preferred, QSizePolicy::Minimum);
        policy.setHeightForWidth(true);
        this->setSizePolicy(policy);
    }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override {
        const int text = textBounds(std::max(1, width - textLeft())).height();
        return std::max(text, this->style()->pixelMetric(IndicatorHeight, nullptr, this)) + 2 * Margin;
    }
    QSize sizeHint() const override {
        const QRect text = textBounds(PreferredTextWidth);
        return {textLeft() + text.width() + Margin, std::max(text.height(), this->style()->pixelMetric(IndicatorHeight, nullptr, this)) + 2 * Margin};
    }
    QSize minimumSizeHint() const override { return {textLeft() + this->fontMetrics().averageCharWidth() * 10, lineHeight() + 2 * Margin}; }

protected:
    bool hitButton(const QPoint& pos) const override { return this->rect().contains(pos); }
    void paintEvent(QPaintEvent*) override {
        QStylePainter painter(this);
        QStyleOptionButton option;
        this->initStyleOption(&option);
        const int indicatorWidth = this->style()->pixelMetric(IndicatorWidth, nullptr, this);
        const int indicatorHeight = this->style()->pixelMetric(IndicatorHeight, nullptr, this);
        QStyleOptionButton indicator = option;
        indicator.rect = QRect(0, Margin + std::max(0, (lineHeight() - indicatorHeight) / 2), indicatorWidth, indicatorHeight);
        painter.drawPrimitive(Indicator, indicator);
        const QRect textRect(textLeft(), Margin, this->width() - textLeft(), this->height() - 2 * Margin);
        painter.drawItemText(textRect, TextFlags, this->palette(), this->isEnabled(), this->text(), QPalette::WindowText);
        if (!this->hasFocus()) return;
        QStyleOptionFocusRect focus;
        focus.initFrom(this);
        focus.rect = textBounds(textRect.width()).translated(textRect.topLeft()).adjusted(-2, -1, 2, 1);
        painter.drawPrimitive(QStyle::PE_FrameFocusRect, focus);
    }

private:
    static constexpr int Margin = 2, PreferredTextWidth = 420;
    static constexpr int TextFlags = Qt::AlignLeft | Qt::AlignTop | Qt::TextWordWrap | Qt::TextShowMnemonic;
    int lineHeight() const { return this->fontMetrics().height(); }
    int textLeft() const { return this->style()->pixelMetric(IndicatorWidth, nullptr, this) + 6; }
    QRect textBounds(int width) const { return this->fontMetrics().boundingRect(QRect(0, 0, width, 1 << 20), TextFlags, this->text()); }
};

using WrapCheckBox = WrapButton<QCheckBox, QStyle::PE_IndicatorCheckBox, QStyle::PM_IndicatorWidth, QStyle::PM_IndicatorHeight>;
using WrapRadioButton =
    WrapButton<QRadioButton, QStyle::PE_IndicatorRadioButton, QStyle::PM_ExclusiveIndicatorWidth, QStyle::PM_ExclusiveIndicatorHeight>;

}  // namespace brenvik
