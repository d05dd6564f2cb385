// The help: its pages, the window that shows them, and the ways that lead there.
#include <QAction>
#include <QDir>
#include <QDirIterator>
#include <QMessageBox>
#include <QRegularExpression>
#include <QSet>
#include <QTimer>
#include <QtTest/QTest>

#include "ProgramFixture.h"
#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "shell/tipwindows/frmBVK_Datentyp.h"
#include "shell/windows/frmBVK_Hilfe.h"
#include "support/TempDir.h"

namespace brenvik::test {
namespace {

using Lines = std::vector<std::string>;

const QString Folder = QStringLiteral(BRENVIK_SOURCE_DIR "/data/hilfe");

QString pageText(const QString& file) {
    QFile page(Folder + '/' + file);
    return page.open(QIODevice::ReadOnly) ? QString::fromUtf8(page.readAll()) : QString();
}

QStringList allOf(const QString& text, const char* pattern) {
    QStringList found;
    for (auto it = QRegularExpression(QString::fromUtf8(pattern)).globalMatch(text); it.hasNext();) found << it.next().captured(1);
    return found;
}

TEST(HelpPages, EachIsListedTitledAndLeadsOnlyWhereSomethingIs) {
    const QStringList contents = allOf(pageText("inhalt.html"), "href=\"([^\"]*)\"");
    QSet<int> topics;
    QSet<QString> listed;
    for (const HelpPage& page : helpPages()) {
        const QString text = pageText(page.datei);
        EXPECT_TRUE(text.contains(QStringLiteral("charset=utf-8"))) << page.datei;
        EXPECT_EQ(allOf(text, "<title>(.*)</title>"), QStringList{page.titel}) << page.datei;
        EXPECT_EQ(allOf(text, "<h1>(.*)</h1>"), QStringList{page.titel}) << page.datei;
        EXPECT_FALSE(topics.contains(page.topic)) << page.datei;
        EXPECT_TRUE(page.topic == helpTopic::Contents || contents.contains(page.datei)) << page.datei << " is not in the contents";
        topics.insert(page.topic);
        listed.insert(page.datei);
        for (const QString& link : allOf(text, "href=\"([^\"]*)\"")) {
            const QString target = link.section('#', 0, 0), anchor = link.section('#', 1);
            const QString there = target.isEmpty() ? text : pageText(target);
            EXPECT_TRUE(!there.isEmpty() && (anchor.isEmpty() || there.contains("name=\"" + anchor + '"'))) << page.datei << " -> " << link.toStdString();
        }
        const QStringList icons = allOf(text, "src=\"icon:([^\"]*)\"");
        for (const QString& icon : icons) EXPECT_TRUE(QFile::exists(QStringLiteral(BRENVIK_SOURCE_DIR "/data/icons/%1.svg").arg(icon))) << page.datei << ": " << icon.toStdString();
        EXPECT_EQ(icons.size(), allOf(text, "(<img)").size()) << page.datei;
        EXPECT_FALSE(text.contains(QRegularExpression("color|style="))) << page.datei << " has looks of its own, which dark palettes do not know";
    }
    for (const QString& file : QDir(Folder).entryList({"*.html"})) EXPECT_TRUE(listed.contains(file)) << file.toStdString();
}

TEST(HelpTopics, EveryWindowOfTheProgramHasItsPage) {
    const QStringList without{"frmBVK_Prog", "frmBVK_Hilfe", "frmBVK_Info"};     // asks for its Tip's; is the help; nobody is there yet
    for (QDirIterator headers(QStringLiteral(BRENVIK_SOURCE_DIR "/src/shell"), {"frmBVK_*.h"}, QDir::Files, QDirIterator::Subdirectories); headers.hasNext();) {
        headers.next();
        const QString header = headers.fileName();
        const QString window = header.section('.', 0, 0);
        if (!without.contains(window)) {
            EXPECT_NE(topicOfWindow(window), helpTopic::Contents) << window.toStdString();
        }
    }
    EXPECT_EQ(topicOfTip(helpTopic::History, art::Farbe), helpTopic::History) << "a Tip with a page of its own";
    EXPECT_EQ(topicOfTip(4711, art::Farbe), helpTopic::Panelart + art::Farbe);
}

TEST(HelpTopics, FileNamesOfTheProgramAndItsCompanion) {
    for (const char* own : {"BRENVIK.hlp", "\\BRENVIK.hlp", "brenvik.HLP", "C:\\Programme\\Brenvik\\BRENVIK.hlp", "/opt/brenvik/ostrana.hlp", "ostrana.chm"})
        EXPECT_TRUE(isOwnHelp(own)) << own;
    for (const char* foreign : {"", "\\", "winhelp.hlp", "BRENVIK.hlp.txt", "xBRENVIK.hlp", "ostrana.hlp/"}) EXPECT_FALSE(isOwnHelp(foreign)) << foreign;
}

class HelpWindow : public testing::Test {
protected:
    template <class T> T& control(const char* name) { return *window.findChild<T*>(QString::fromUtf8(name)); }
    QString note() { return control<QLabel>("lblHinweis").isHidden() ? QString() : control<QLabel>("lblHinweis").text(); }
    void follow(const QString& link) { emit control<QTextBrowser>("txtHilfe").anchorClicked(QUrl(link)); }
    QStringList shownPages() {
        QStringList shown;
        for (QTreeWidgetItemIterator it(&control<QTreeWidget>("tvInhalt"), QTreeWidgetItemIterator::NotHidden | QTreeWidgetItemIterator::NoChildren); *it; ++it)
            if (!(*it)->parent() || !(*it)->parent()->isHidden()) shown << (*it)->text(0);
        return shown;
    }

    std::vector<std::string> addresses;
    bool addressOpens = true;
    frmBVK_Hilfe window{Folder.toStdString(), [this](const std::string& address) {
                            addresses.push_back(address);
                            return addressOpens;
                        }};
};

TEST_F(HelpWindow, ShowsTopicsAndMovesThroughThem) {
    window.showTopic(helpTopic::DebugMode);
    EXPECT_EQ(window.windowTitle(), "BVK Debug-Modus - Brenvik Hilfe");
    EXPECT_EQ(control<QTreeWidget>("tvInhalt").currentItem()->text(0), "BVK Debug-Modus");
    follow("optionen.html");
    EXPECT_EQ(window.presentPage(), "optionen.html");
    window.findChild<QAction*>("tbrZurück")->trigger();
    EXPECT_EQ(window.presentPage(), "debug-modus.html");
    window.findChild<QAction*>("tbrVor")->trigger();
    EXPECT_EQ(window.presentPage(), "optionen.html");
    window.findChild<QAction*>("tbrInhalt")->trigger();
    EXPECT_EQ(window.presentPage(), "inhalt.html");
    EXPECT_EQ(note(), "");
}

TEST_F(HelpWindow, WhatIsNotThereIsTold) {
    window.showTopic(4711);
    EXPECT_EQ(window.presentPage(), "inhalt.html");
    EXPECT_TRUE(note().contains("4711"));
    window.showTopic(helpTopic::Export);
    EXPECT_EQ(note(), "");
    for (const char* outside : {"fehlt.html", "../tipps/01_desktop.toml", "file:///etc/passwd"}) {
        follow(outside);
        EXPECT_EQ(window.presentPage(), "export.html") << outside;
        EXPECT_NE(note(), "") << outside;
    }
    follow("https://www.brenvik.example/");
    EXPECT_EQ(addresses, Lines{"https://www.brenvik.example/"});
    addressOpens = false;
    follow("mailto:wer@brenvik.example");
    EXPECT_TRUE(note().contains("konnte nicht"));

    TempDir empty;
    frmBVK_Hilfe nothing(empty.path(), [](const std::string&) { return true; });
    nothing.showTopic(helpTopic::FirstSteps);
    EXPECT_TRUE(nothing.findChild<QLabel*>("lblHinweis")->text().contains("erste-schritte.html"));
}

TEST_F(HelpWindow, SearchLeavesThePagesThatHoldAllWords) {
    const auto all = shownPages();
    EXPECT_EQ(static_cast<std::size_t>(all.size()), helpPages().size());
    auto& search = control<QLineEdit>("txtHilfeSuche");
    search.setText("brenvik.log /DEBUG");
    EXPECT_TRUE(shownPages().contains("BVK Debug-Modus"));
    EXPECT_LT(shownPages().size(), all.size());
    search.setText("Quietscheentchen");
    EXPECT_EQ(shownPages(), QStringList());
    EXPECT_TRUE(note().contains("Quietscheentchen"));
    search.clear();
    EXPECT_EQ(shownPages(), all);
    EXPECT_EQ(note(), "");
}

class HelpInProgram : public ProgramFixture {
protected:
    HelpInProgram() { EXPECT_TRUE(start()); }
    frmBVK_Hilfe* help() {
        for (QWidget* top : QApplication::topLevelWidgets())
            if (auto* found = dynamic_cast<frmBVK_Hilfe*>(top); found && found->isVisible()) return found;
        return nullptr;
    }
    QString page() { return help() ? help()->presentPage() : QString(); }
    // Runs act in the modal window that opens next.
    void inNext(std::function<void(QDialog&)> act) {
        QTimer::singleShot(0, &window(), [act = std::move(act)] { act(dynamic_cast<QDialog&>(*QApplication::activeModalWidget())); });
    }
};

TEST_F(HelpInProgram, TheMenuLeadsToItsPages) {
    menu("mnuBVKInfo");
    EXPECT_EQ(page(), "info.html");
    menu("mnuBVKInhalt");
    EXPECT_EQ(page(), "inhalt.html");
    menu("mnuOSTInfo");
    EXPECT_EQ(page(), "tipps.html");
    ctx().einstellungen.Ostrana_Name = product::OstranaChm;
    menu("mnuOSTInhalt");
    EXPECT_EQ(page(), "inhalt.html");
}

TEST_F(HelpInProgram, F1AndTheButtonKnowWhatIsOnScreen) {
    QTest::keyClick(&control<TipTreeView>("tvBVKDB"), Qt::Key_F1);
    EXPECT_EQ(page(), "tipps.html");
    QSet<QString> seen;
    for (const auto& row : ctx().udtTippListe) {
        engine().tree().showTipByNumber(row.Index);
        control<QPushButton>("cmdHilfe").click();
        const std::int16_t kind = ctx().aktuellerTipp.Eintrag[1].Ausgabeart;
        EXPECT_EQ(page(), helpPage(helpTopic::Panelart + kind)->datei) << row.Überschrift;
        seen.insert(page());
        if (seen.size() == 11) break;
    }
    EXPECT_EQ(seen.size(), 11);
}

TEST_F(HelpInProgram, AnUnknownHelpFileIsTold) {
    port.expect("fremd.hlp");
    port.showHelp("fremd.hlp", 3);
    EXPECT_EQ(help(), nullptr);
}

// A modal window blocks all others but its own children.
TEST_F(HelpInProgram, AModalWindowOwnsTheHelpWhileItIsOpen) {
    DatentypRequest request;
    inNext([&](QDialog& dialog) {
        dialog.findChild<QPushButton*>("cmdHelp")->click();
        EXPECT_EQ(page(), "datentypen.html");
        EXPECT_EQ(help()->parentWidget(), &dialog);
        dialog.reject();
    });
    port.showWindow(request);
    ASSERT_NE(help(), nullptr);             // stays open for who wants to read on
    EXPECT_EQ(help()->parentWidget(), nullptr);
    EXPECT_EQ(page(), "datentypen.html");

    inNext([&](QDialog& box) {
        for (QAbstractButton* button : dynamic_cast<QMessageBox&>(box).buttons())
            if (button->text() == "&Hilfe") button->click();
        EXPECT_TRUE(box.isVisible());
        EXPECT_EQ(page(), "debug-modus.html");
        EXPECT_EQ(help()->parentWidget(), &box);
        dynamic_cast<QMessageBox&>(box).buttons().first()->click();
    });
    port.QtPort::messageBox({"Es ist ein Fehler aufgetreten", box::OK + box::Help, "", std::string(product::HelpFile), helpTopic::DebugMode});
    EXPECT_EQ(help()->parentWidget(), nullptr);
}

TEST_F(HelpInProgram, F1InADialogOpensItsPage) {
    inNext([&](QDialog& dialog) {
        QTest::keyClick(&dialog, Qt::Key_F1);
        EXPECT_EQ(page(), "infofenster.html");
        dialog.reject();
    });
    menu("mnuSystemInfo");
}

}  // namespace
}  // namespace brenvik::test
