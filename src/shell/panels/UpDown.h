#pragma once
// The pair of arrows beside a number field.
#include <QToolButton>
#include <QWidget>
#include <cstdint>

namespace brenvik {

class UpDown : public QWidget {
    Q_OBJECT
public:
    explicit UpDown(const QString& objectName, QWidget* parent);

    void setRange(std::int32_t minimum, std::int32_t maximum);
    void setValue(std::int32_t value);                  // emits nothing
    std::int32_t value() const { return value_; }
    void stepBy(std::int64_t steps);                    // as if the user had pressed an arrow

signals:
    void stepped(std::int32_t value);

private:
    QToolButton* arrow(Qt::ArrowType type, const char* name, int step);
    std::int32_t minimum_ = 0, maximum_ = 0, value_ = 0;
};

}  // namespace brenvik
