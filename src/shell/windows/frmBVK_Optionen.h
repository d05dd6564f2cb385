#pragma once
// The options dialog: tabs over the copies of the settings that its request holds.
#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTabWidget>

#include "frame/program/Options.h"
#include "shell/widgets/Dialogs.h"

namespace brenvik {

class frmBVK_Optionen : public Dialog {
public:
    frmBVK_Optionen(OptionenRequest& request, QWidget* parent);

private:
    QVBoxLayout* page(const char* name, const QString& caption);
    void makeGeneral();
    void makeChecks();
    void makeFiles();
    void makeFolders();
    void makeHelp();
    void makePassword();
    QCheckBox* check(QVBoxLayout& column, const char* name, const QString& caption, bool on, std::function<void(bool)> store);
    QRadioButton* option(QVBoxLayout& column, const char* name, const QString& caption, bool on, std::function<void()> chosen);
    QLineEdit* folder(QVBoxLayout& column, const char* field, const char* button, int text, std::string& value);
    QLabel* note(QVBoxLayout& column, const char* name, const QString& text);
    void chooseHelp(const std::string& file);
    void showHelp();
    void readFolder(QLineEdit& field, std::string& value);
    void cmdOptOK();

    OptionenRequest& request_;
    QTabWidget* tabOption_;
    QRadioButton *opbAltesHelp_ = nullptr, *opbNeuesHelp_ = nullptr;
    QLineEdit *txtHelpPfad_ = nullptr, *txtPW1_ = nullptr, *txtPW2_ = nullptr;
    std::vector<std::pair<QLineEdit*, std::string*>> folders_;
};

}  // namespace brenvik
