#pragma once
// cbrBVK: the four bands of toolbars, in as many rows as their contents need.
#include <QAction>
#include <QComboBox>
#include <QFrame>
#include <QHash>
#include <QToolBar>
#include <QToolButton>
#include <array>
#include <functional>

#include "shell/main/ButtonOrder.h"
#include "shell/main/Commands.h"
#include "shell/main/WindowSettings.h"
#include "shell/widgets/FlowLayout.h"
#include "shell/widgets/Icons.h"

namespace brenvik {

class CoolBar : public QFrame {
    Q_OBJECT
public:
    CoolBar(IconSet& icons, std::function<void(Command, const QString& control)> run, QWidget* parent);

    QAction* button(const QString& name) const { return actions_.value(name); }
    QComboBox* cboFavoriten() const { return cboFavoriten_; }
    void NavBar(bool withText);
    void show(const MainWindow& record, const std::function<bool(Command)>& possible);
    void refreshIcons();

    // Bands count from 0 here.
    void applyBand(std::size_t band, const BandSetting& stored);
    BandSetting band(std::size_t band) const;
    void setBandVisible(std::size_t band, bool on);

    // The arrangement of the buttons of a toolbar; see ButtonOrder.h.
    void arrange(const QString& toolBar, const std::string& text);
    std::string arrangement(const QString& toolBar) const;
    void askArrangement(const QString& toolBar);

signals:
    void heightChanged();

private:
    struct Bar {
        ButtonOrder standard, order;
    };
    QToolBar* addToolBar(const char* name, const char* accessibleName, const ToolButton* first, const ToolButton* last);
    void fill(QToolBar& bar, const ButtonOrder& order);
    void arrangementMenu(QToolBar& bar, const QPoint& place);
    QWidget* makeFavouriteBand();

    IconSet& icons_;
    std::function<void(Command, const QString&)> run_;
    FlowLayout* flow_;
    std::array<QWidget*, 4> bands_{};
    std::array<BandSetting, 4> stored_ = MainWindowSettings().Band;
    QHash<QString, QAction*> actions_;
    QHash<QString, Bar> bars_;
    QHash<QString, QString> iconNames_;
    QToolButton* tlbcmdFav_ = nullptr;
    QComboBox* cboFavoriten_ = nullptr;
};

}  // namespace brenvik
