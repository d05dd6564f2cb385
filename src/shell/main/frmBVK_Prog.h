#pragma once
// The main window: draws the record MainWindow and hands the user's events on. It decides nothing itself.
// Object names of its controls are their names in the program: "cmdRegSave", "chkCheckBox(0)", "tvBVKDB".
#include <QHash>
#include <QMainWindow>
#include <QTimer>
#include <functional>

#include "frame/Context.h"
#include "shell/main/Commands.h"
#include "shell/main/CoolBar.h"
#include "shell/main/LowerRegion.h"
#include "shell/main/Menus.h"
#include "shell/main/PanelArea.h"
#include "shell/main/TipTreeView.h"
#include "shell/main/WindowEvents.h"
#include "shell/main/WindowSettings.h"
#include "shell/widgets/Icons.h"
#include "shell/widgets/SplitterBar.h"
#include "shell/widgets/TabStrip.h"

namespace brenvik {

class frmBVK_Prog : public QMainWindow, public WindowObserver {
    Q_OBJECT
public:
    // Record and settings must outlive the window. displayOrder is the engine's.
    frmBVK_Prog(const MainWindow& record, Settings& settings, TipTreeModel::Order displayOrder);
    ~frmBVK_Prog() override;

    void attach(WindowEvents& events);                        // before anything is shown
    void setVersion(const std::string& strProgVersion);       // the caption
    void setCommand(Command command, std::function<void()> handler);
    void onUnload(std::function<void()> handler) { unload_ = std::move(handler); }   // once, when the window closes

    void applySettings(const MainWindowSettings& stored);   // place, splitters, bands, NavBar
    MainWindowSettings presentSettings() const;
    void NavBar();
    void showTab();                                           // the record's tab, without reading a tree
    void bringToFront(const QByteArray& activationToken);     // what the desktop gave for it, if anything
    void SizeControlsV(double x);                             // twips
    void SizeControlsH(double y);

    Menus& menus() { return *menus_; }
    CoolBar& coolBar() { return *cbrBVK_; }

    void treeChanged() override;
    void selectionChanged() override;
    void panelsChanged() override;
    void panelChanged(std::size_t place) override;
    void windowChanged() override;

protected:
    void closeEvent(QCloseEvent* event) override;
    void changeEvent(QEvent* event) override;
    void showEvent(QShowEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    void watchPlace();
    void makeLeft();
    void makeSplitters();
    void makeShortcuts();
    void layoutForm();
    void run(Command command, const QString& control);
    bool possible(Command command) const;
    void ownCommands();
    void toggleBand(std::size_t band, const char* menuEntry);
    void setNavText(bool on);
    void orderTabs();
    SplitterLimits limitsV() const;
    SplitterLimits limitsH() const;
    void limitSize();
    void moveOntoScreen();
    std::string captionOf(const QString& control) const;

    const MainWindow& record_;
    Settings& settings_;
    WindowEvents* events_ = nullptr;
    IconSet icons_;
    QHash<int, std::function<void()>> handlers_;
    std::function<void()> unload_;
    double splitterVLeft_ = 0, splitterHTop_ = 0;    // twips
    QRect ownPlace_;                                 // frame's corner and inner size while it does not fill the screen
    QTimer settled_;

    std::unique_ptr<Menus> menus_;
    QWidget* form_;
    CoolBar* cbrBVK_;
    QWidget* left_;
    TabStrip* tbsTree_;
    TipTreeModel* treeModel_;
    TipTreeView* tvBVKDB_;
    SplitterBar* imgSplitterV_ = nullptr;
    SplitterBar* imgSplitterH_ = nullptr;
    PanelArea* panels_;
    InfoFrame* fraInfo_;
    ActionRow* fraSteuerung_;
    StatusRow* sbrBVK_;
};

}  // namespace brenvik
