#pragma once
// A small engine, and a modal window driven by its controls' names: onWindow of the scripted port makes the real window,
// hands it to the test and takes it away again.
#include <QApplication>
#include <QPushButton>
#include <QtTest/QTest>

#include "shell/main/frmBVK_Prog.h"
#include "shell/widgets/QtText.h"
#include "tipengine/EngineFixture.h"

namespace brenvik::test {

template <class T> T& named(QWidget& window, const char* name) {
    T* found = window.findChild<T*>(QString::fromUtf8(name));
    if (!found) throw std::runtime_error(std::string("no control ") + name);
    return *found;
}

inline void clickOn(QWidget& window, const char* button) {
    QTest::mouseClick(&named<QAbstractButton>(window, button), Qt::LeftButton, {}, QPoint(8, named<QAbstractButton>(window, button).height() / 2));
}

// The controls in the order that the Tab key goes through them, from the first on.
inline std::string tabOrder(const QWidget& window, QWidget& first) {
    std::string names;
    QWidget* widget = &first;
    do {
        if (widget->isVisible() && widget->isEnabled() && (widget->focusPolicy() & Qt::TabFocus) && !widget->objectName().startsWith("qt_"))
            names += widget->objectName().toStdString() + " ";
        widget = widget->nextInFocusChain();
    } while (widget != &first && window.isAncestorOf(widget));
    return names;
}

// The window is shown, driven, and gone afterwards; the answer of a request stands in the request.
template <class Window, class Request> std::function<void(WindowRequest&)> driving(ScriptedPort& port, std::function<void(Window&)> act) {
    return [&port, act = std::move(act)](WindowRequest& request) {
        auto& record = dynamic_cast<Request&>(request);
        const auto drive = [&](Window&& window) {
            window.show();
            act(window);
        };
        if constexpr (std::is_constructible_v<Window, UserPort&, Request&, QWidget*>) drive(Window(port, record, nullptr));
        else drive(Window(record, nullptr));
    };
}

}  // namespace brenvik::test
