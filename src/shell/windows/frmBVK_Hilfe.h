#pragma once
// The help: contents with a search on the left, the page on the right. Stays open beside the program.
#include <QDialog>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>
#include <QToolBar>
#include <QTreeWidget>
#include <filesystem>
#include <functional>

#include "shell/widgets/Icons.h"
#include "shell/windows/HelpPages.h"

namespace brenvik {

// Shows pages of the help folder; "icon:speichern" stands for a picture of the program in the palette's colours.
class HelpText : public QTextBrowser {
public:
    HelpText(const QString& folder, IconSet& icons, QWidget* parent) : QTextBrowser(parent), folder_(folder), icons_(icons) {}
    QVariant loadResource(int type, const QUrl& name) override;

private:
    const QString& folder_;
    IconSet& icons_;
};

class frmBVK_Hilfe : public QDialog {
public:
    // folder: where the pages lie. openAddress opens what is no page of ours; false: it could not.
    frmBVK_Hilfe(const std::filesystem::path& folder, std::function<bool(const std::string&)> openAddress, QWidget* parent = nullptr);

    void showTopic(int topic);              // an unknown one: the contents, and a line that says so
    const QString& presentPage() const { return page_; }    // file name of the page on screen

protected:
    void changeEvent(QEvent* event) override;

private:
    void makeToolbar();
    QWidget* makeContents();
    void showPage(const QString& file, const QString& anchor = {});
    void follow(const QUrl& link);
    void search(const QString& text);
    bool pageHolds(const QString& file, const QStringList& words);
    void pageShown(const QString& file);
    void note(const QString& text);
    void refreshIcons();
    QString pathOf(const QString& file) const;

    QString folder_, page_;
    std::function<bool(const std::string&)> openAddress_;
    IconSet icons_;
    QToolBar* toolbar_;
    QLineEdit* txtHilfeSuche_;
    QTreeWidget* tvContents_;
    QLabel* lblHint_;
    HelpText* txtHilfe_;
    QHash<QString, QString> texts_;         // words of the pages, read when first searched
};

}  // namespace brenvik
