#pragma once
// Caption and status of a panel: side by side where the width allows it, else one below the other.
#include <QBoxLayout>
#include <QLabel>

#include "tipengine/Panel.h"

namespace brenvik {

class PanelHeader : public QWidget {
public:
    explicit PanelHeader(QWidget* parent);
    QLabel* caption() const { return caption_; }
    void setStatus(const StatusLine& status);
    void setPlace(std::size_t place);

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void arrange();
    QBoxLayout* layout_;
    QLabel* caption_;
    QLabel* status_;
};

}  // namespace brenvik
