#pragma once
// What stands in a field of several lines.
#include <QPlainTextEdit>
#include <QTextDocument>

namespace brenvik {

// Unlike toPlainText, which gives blanks for those that do not break and line ends for U+2028.
inline QString fieldText(const QPlainTextEdit& field) { return field.document()->toRawText().replace(QChar::ParagraphSeparator, QLatin1Char('\n')); }

}  // namespace brenvik
