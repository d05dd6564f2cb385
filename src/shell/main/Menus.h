#pragma once
// The menu bar: every entry with its caption, from one table.
#include <QAction>
#include <QHash>
#include <QMenu>
#include <QMenuBar>
#include <functional>

#include "shell/main/Commands.h"
#include "shell/widgets/Icons.h"

namespace brenvik {

class Menus {
public:
    // run is called with the command and the control that was used.
    Menus(QMenuBar& bar, IconSet& icons, std::function<void(Command, const QString& control)> run);

    QAction* action(const QString& name) const { return actions_.value(name); }
    QMenu* menu(const QString& name) const { return menus_.value(name); }
    void refreshIcons();
    void show(const MainWindow& record, const std::function<bool(Command)>& possible);

private:
    void add(const MenuEntry& entry, QMenuBar& bar);
    IconSet& icons_;
    std::function<void(Command, const QString&)> run_;
    QHash<QString, QAction*> actions_;
    QHash<QString, QMenu*> menus_;
    QHash<QString, QString> iconNames_;
};

}  // namespace brenvik
