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
    CoolBar(IconSet& icons, std::function<void(Befehl, const QString& control)> run, QWidget* parent);

    QAction* button(const QString& name) const { return actions_.value(name); }
    QComboBox* cboFavoriten() const { return cboFavoriten_; }
    void NavBar(bool withText);
    void show(const Hauptfenster& record, const std::function<bool(Befehl)>& possible);
    void refreshIcons();

    // Bands count from 0 here.
    void applyBand(std::size_t band, const BandEinstellung& stored);
    BandEinstellung band(std::size_t band) const;
    void setBandVisible(std::size_t band, bool on);

    // The arrangement of the buttons of a toolbar; see ButtonOrder.h.
    void arrange(const QString& toolBar, const std::string& text);
    std::string arrangement(const QString& toolBar) const;
    void askArrangement(const QString& toolBar);

signals:
    void heightChanged();

private:
    struct Leiste {
        Knopfordnung standard, order;
    };
    QToolBar* addToolBar(const char* name, const char* accessibleName, const ToolButton* first, const ToolButton* last);
    void fill(QToolBar& bar, const Knopfordnung& order);
    void arrangementMenu(QToolBar& bar, const QPoint& place);
    QWidget* makeFavouriteBand();

    IconSet& icons_;
    std::function<void(Befehl, const QString&)> run_;
    FlowLayout* flow_;
    std::array<QWidget*, 4> bands_{};
    std::array<BandEinstellung, 4> stored_ = FensterEinstellungen().Band;
    QHash<QString, QAction*> actions_;
    QHash<QString, Leiste> leisten_;
    QHash<QString, QString> iconNames_;
    QToolButton* tlbcmdFav_ = nullptr;
    QComboBox* cboFavoriten_ = nullptr;
};

}  // namespace brenvik
