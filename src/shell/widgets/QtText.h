#pragma once
// Between the core's UTF-8 texts and Qt's.
#include <QString>
#include <string>
#include <string_view>

namespace brenvik {

inline QString qt(std::string_view text) { return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())); }
inline std::string utf8(const QString& text) { return text.toStdString(); }

// Object name of an element of a control array: "chkCheckBox(0)".
inline QString elementName(const char* control, std::size_t index) {
    return QLatin1String(control) + QLatin1Char('(') + QString::number(index) + QLatin1Char(')');
}

}  // namespace brenvik
