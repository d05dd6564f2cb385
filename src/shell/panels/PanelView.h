#pragma once
// One panel of the Tip on screen: draws its record and tells what the user did. While it draws, and once it is
// detached, nothing it emits reaches the engine. A detached view is deleted later: its own signal may be on the stack.
#include <QFrame>
#include <QLabel>
#include <QVBoxLayout>
#include <memory>

#include "shell/main/WindowEvents.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"
#include "tipengine/MainWindow.h"

namespace brenvik {

class PanelHeader;

// What the panels need from the window around them.
struct PanelHost {
    const MainWindow& record;
    WindowEvents& events;
};

class PanelView : public QFrame {
    Q_OBJECT
public:
    using Panel = brenvik::Panel;      // QFrame has a Panel of its own

    PanelView(PanelHost& host, std::size_t place, const char* frameName, QWidget* parent);

    void drawPanel(const Panel& panel);
    virtual bool fits(const Panel& panel) const;         // the record can be drawn by this very view
    virtual bool growsToFill() const { return false; }   // takes the height that is left
    void detach();
    std::size_t place() const { return place_; }

protected:
    virtual void draw(const Panel& panel) = 0;
    void changeEvent(QEvent* event) override;

    // Wraps a handler of a user's event: called only while the user can have been the cause.
    template <class F> auto user(F handler) {
        return [this, handler](auto&&... args) {
            if (!drawing_ && !detached_) handler(args...);
        };
    }
    void setCaption(const char* labelName, const Panel& panel, const QString& caption);
    void setHint(const std::string& text);
    const Panel* record() const;                         // none while the engine builds another Tip
    QString element(const char* control) const { return elementName(control, index_); }

    PanelHost& host_;
    QVBoxLayout* body_;
    std::size_t place_;
    std::int16_t kind_ = 0;
    std::int16_t index_ = 0;

private:
    PanelHeader* header_;
    QLabel* hint_ = nullptr;                             // made when there is something to say
    bool drawing_ = false;
    bool detached_ = false;
};

PanelView* makePanelView(PanelHost& host, std::size_t place, const Panel& panel, QWidget* parent);

// A scrolling area must not change values on its way: the wheel works on a control only while it has the focus.
void guardWheel(QWidget& control);

}  // namespace brenvik
