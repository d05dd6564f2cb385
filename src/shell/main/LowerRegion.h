#pragma once
// What stands below the panels: fraInfo with the description, fraSteuerung with the action row, sbrBVK.
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <array>
#include <functional>

#include "shell/main/Commands.h"
#include "shell/widgets/Icons.h"
#include "shell/widgets/TitledFrame.h"

namespace brenvik {

class InfoFrame : public TitledFrame {
public:
    explicit InfoFrame(QWidget* parent);
    void show(const MainWindow& record, bool helpPossible);
    QPlainTextEdit* txtInfo() const { return txtInfo_; }
    QPushButton* cmdHilfe() const { return cmdHilfe_; }

protected:
    void resizeEvent(QResizeEvent* event) override;

private:
    void fitHelpLabel();

    QPlainTextEdit* txtInfo_;
    QLabel* lblHilfe_;
    QPushButton* cmdHilfe_;
};

class ActionRow : public TitledFrame {
public:
    ActionRow(IconSet& icons, std::function<void(Command, const QString& control)> run, QWidget* parent);
    void show(const MainWindow& record, const std::function<bool(Command)>& possible, IconSet& icons);
    void refreshIcons(IconSet& icons);
    QPushButton* cmdRegSave() const { return buttons_[0]; }
    const std::array<QPushButton*, 4>& buttons() const { return buttons_; }

private:
    std::array<QPushButton*, 4> buttons_{};
    bool entries_ = false;      // the buttons stand for entries of a context menu
};

class StatusRow : public QFrame {      // sbrBVK; its panels wrap instead of being cut
public:
    explicit StatusRow(QWidget* parent);
    void show(const MainWindow& record);

private:
    std::array<QLabel*, 3> panels_{};
};

}  // namespace brenvik
