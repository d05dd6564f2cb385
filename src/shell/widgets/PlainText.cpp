#include "shell/widgets/PlainText.h"

#include <algorithm>

#include "frame/text/ShownText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr qsizetype TipWidth = 100;             // characters
constexpr int MostLinesInTip = 20, MostLinesInBox = 40;
constexpr QChar BreakHere(0x200B);              // shows nothing
const QString Cut = QStringLiteral("…");

// The lines that fit, and a mark if there are more.
QString firstLines(const QString& text, int most) {
    qsizetype end = -1;
    for (int line = 0; line < most; ++line) {
        end = text.indexOf(QLatin1Char('\n'), end + 1);
        if (end < 0) return text;
    }
    return text.left(end + 1) + Cut;
}

qsizetype longestLine(const QString& text) {
    qsizetype longest = 0;
    for (const QStringView line : QStringView(text).split(u'\n')) longest = std::max(longest, line.size());
    return longest;
}

QString withPlacesToBreak(const QString& text) {
    QString broken;
    qsizetype run = 0;
    for (const QChar c : text) {
        broken += c;
        run = c.isSpace() ? 0 : run + 1;
        if (run < TipWidth || c.isHighSurrogate()) continue;
        broken += BreakHere;
        run = 0;
    }
    return broken;
}

}  // namespace

QString plainLine(std::string_view text) { return qt(shownText(text, ShownAs::Line, MostInLine)); }

QString plainLines(std::string_view text, std::size_t most) { return qt(shownText(text, ShownAs::Lines, most)); }

QString plainCaption(std::string_view text) { return plainLine(text).replace(QLatin1Char('&'), QLatin1String("&&")); }

QString boxText(std::string_view text) { return firstLines(plainLines(text, MostInBox), MostLinesInBox); }

QString toolTipText(std::string_view text) {
    const QString shown = firstLines(plainLines(text, MostInTip), MostLinesInTip);
    if (!shown.contains(QLatin1Char('<')) && !shown.contains(QLatin1Char('&')) && longestLine(shown) <= TipWidth) return shown;
    return QStringLiteral("<span style=\"white-space:pre-wrap\">") + withPlacesToBreak(shown).toHtmlEscaped() + QStringLiteral("</span>");
}

QString toolTipText(const QString& text) { return toolTipText(std::string_view(utf8(text.left(static_cast<qsizetype>(MostInTip) + 1)))); }

QString unseenNote(std::string_view text) {
    const std::string part(text.substr(0, MostInLines));
    return hasUnseen(part) ? QStringLiteral("Enthält Zeichen, die hier nicht zu sehen sind: ") + plainLine(part) : QString();
}

}  // namespace brenvik
