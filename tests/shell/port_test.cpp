// Message boxes, file filters and the modal windows of the shell.
#include <QDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTimer>
#include <QtTest/QTest>

#include "WindowFixture.h"
#include "shell/QtPort.h"
#include "shell/tipwindows/frmBVK_Bearbeiten.h"
#include "tipengine/WindowRequests.h"

namespace brenvik::test {

// Runs act in the modal window that opens next.
void inNextWindow(std::function<void(QWidget&)> act) {
    QTimer::singleShot(0, qApp, [act = std::move(act)] {
        QWidget* modal = QApplication::activeModalWidget();
        ASSERT_NE(modal, nullptr);
        act(*modal);
    });
}

struct BoxCase {
    const char* name;
    int flags;
    QStringList captions;
    std::vector<Answer> answers;    // by button
};

class Boxes : public testing::TestWithParam<BoxCase> {};

TEST_P(Boxes, HaveTheirGermanButtonsAndAnswers) {
    QtPort port;
    for (std::size_t pressed = 0; pressed < GetParam().answers.size(); ++pressed) {
        QStringList captions;
        inNextWindow([&](QWidget& box) {
            EXPECT_EQ(box.windowTitle(), "Brenvik");
            auto* found = qobject_cast<QMessageBox*>(&box);
            for (QAbstractButton* button : found->buttons()) captions << button->text();
            for (QAbstractButton* button : found->buttons())
                if (button->text() == GetParam().captions[static_cast<qsizetype>(pressed)]) return button->click();
            box.close();
        });
        EXPECT_EQ(port.messageBox({"Text", GetParam().flags}), GetParam().answers[pressed]);
        captions.sort();
        QStringList expected = GetParam().captions;
        expected.sort();
        EXPECT_EQ(captions, expected);
    }
}

INSTANTIATE_TEST_SUITE_P(All, Boxes, testing::Values(
    BoxCase{"Ok", box::OK, {"OK"}, {Answer::OK}},
    BoxCase{"OkCancel", box::OKCancel + box::Critical, {"OK", "Abbrechen"}, {Answer::OK, Answer::Cancel}},
    BoxCase{"YesNo", box::YesNo + box::Question, {"&Ja", "&Nein"}, {Answer::Yes, Answer::No}},
    BoxCase{"YesNoCancel", box::YesNoCancel, {"&Ja", "&Nein", "Abbrechen"}, {Answer::Yes, Answer::No, Answer::Cancel}},
    BoxCase{"RetryCancel", box::RetryCancel + box::Exclamation, {"&Wiederholen", "Abbrechen"}, {Answer::Retry, Answer::Cancel}}),
    [](const auto& one) { return std::string(one.param.name); });

// Escape in "save the changes?" must not mean No.
TEST(QtPort, YesOrNoIsAnsweredByNothingButItsButtons) {
    QtPort port;
    inNextWindow([](QWidget& box) {
        QTest::keyClick(&box, Qt::Key_Escape);
        EXPECT_TRUE(box.isVisible());
        box.close();
        EXPECT_TRUE(box.isVisible());
        dynamic_cast<QMessageBox&>(box).buttons().first()->click();
    });
    port.messageBox({"Speichern?", box::YesNo});
}

TEST(QtPort, FileFiltersOfTheProgramBecomeThoseOfTheDialog) {
    EXPECT_EQ(qtFileFilters("DBName |*.mdb"), QStringList{"DBName (*.mdb)"});
    EXPECT_EQ(qtFileFilters("Programme (*.EXE;*.COM.)|*.EXE;*.COM.|Alle Dateien (*.*)|*.*"),
              (QStringList{"Programme (*.EXE;*.COM.) (*.EXE *.COM)", "Alle Dateien (*.*) (*)"}));
    EXPECT_EQ(qtFileFilters("kein Trenner"), QStringList{});
}

void press(QWidget& window, const char* name) { window.findChild<QPushButton*>(QString::fromUtf8(name))->click(); }

TEST(Dialogs, TheDataTypeWindowContinuesOnlyByItsButton) {
    QtPort port;
    for (const bool go : {true, false}) {
        DatentypRequest request;
        request.tipNumber = "17";
        request.typeDatabase = "REG_DWORD";
        request.typeRegistry = "REG_SZ";
        request.contents = "5";
        inNextWindow([go](QWidget& window) {
            EXPECT_EQ(window.windowTitle(), "Unterschiedliche Datentypen");
            EXPECT_EQ(window.findChild<QLabel*>("lblTypRegistry")->text(), "REG_SZ");
            EXPECT_EQ(window.findChild<QPlainTextEdit*>("lblInhalt")->toPlainText(), "5");
            if (go)
                press(window, "cmdWeiter");
            else
                QTest::keyClick(&window, Qt::Key_Return);    // the default button deletes nothing
        });
        port.showWindow(request);
        EXPECT_EQ(request.weiter, go);
    }
}

TEST(Dialogs, TheEditWindowSavesCompleteEntriesOnly) {
    BearbeitenRequest request;
    request.neu = false;
    request.txtKeyName = "open";
    request.commandRead = [](BearbeitenRequest& r) { r.txtBefehl = "notepad.exe"; };
    request.commandFind = [](BearbeitenRequest& r) { r.txtBefehl = "C:\\neu.exe"; };
    std::vector<std::string> saved;
    bool works = false;
    request.save = [&](BearbeitenRequest& r) {
        saved.push_back(r.txtKeyName + "|" + r.txtBeschreibung + "|" + r.txtBefehl);
        return works;
    };
    frmBVK_Bearbeiten window(request, nullptr);
    window.show();
    const auto field = [&](const char* name) { return window.findChild<QLineEdit*>(QString::fromUtf8(name)); };
    EXPECT_EQ(field("txtBefehl")->text(), "notepad.exe");
    field("txtKeyName")->clear();
    press(window, "cmdSave");
    EXPECT_TRUE(saved.empty());
    field("txtKeyName")->setText("öffnen");
    field("txtBeschreibung")->setText("Öffnen mit");
    press(window, "cmdBefehl");
    EXPECT_EQ(field("txtBeschreibung")->text(), "Öffnen mit") << "what was typed stays";
    press(window, "cmdSave");
    EXPECT_TRUE(window.isVisible()) << "a refused save keeps the window";
    works = true;
    press(window, "cmdSave");
    EXPECT_FALSE(window.isVisible());
    EXPECT_EQ(saved, (Lines{"öffnen|Öffnen mit|C:\\neu.exe", "öffnen|Öffnen mit|C:\\neu.exe"}));
}

TEST(Dialogs, BootINIRefusesANameThatIsThere) {
    QtPort port;
    struct Case {
        const char* name;
        const char* button;
        BootINIRequest::Reply answer;
    };
    for (const Case& c : {Case{"Windows XP", "cmdOK", BootINIRequest::Reply::Abort}, Case{"Neu", "cmdOK", BootINIRequest::Reply::Name},
                          Case{"Windows XP", "cmdWrite", BootINIRequest::Reply::Overwrite},
                          Case{"Neu", "cmdAbbruch", BootINIRequest::Reply::Abort}}) {
        BootINIRequest request;
        request.txtBootWert = "Windows XP";
        request.presentTitles = {"Windows XP", "DOS"};
        int boxes = 0;
        inNextWindow([&](QWidget& window) {
            window.findChild<QLineEdit*>("txtBootWert")->setText(c.name);
            const bool refused = std::string(c.button) == "cmdOK" && std::string(c.name) == "Windows XP";
            if (refused)
                inNextWindow([&](QWidget& box) {
                    ++boxes;
                    EXPECT_EQ(dynamic_cast<QMessageBox&>(box).text(), "Name schon im Bootmenü vorhanden, bitte geben Sie einen anderen Namen an");
                    dynamic_cast<QMessageBox&>(box).buttons().first()->click();
                });
            press(window, c.button);
            EXPECT_EQ(window.isVisible(), refused);
            if (window.isVisible()) window.close();
        });
        port.showWindow(request);
        QCoreApplication::processEvents();
        EXPECT_EQ(request.reply, c.answer) << c.name << " " << c.button;
        EXPECT_EQ(boxes, std::string(c.button) == "cmdOK" && std::string(c.name) == "Windows XP" ? 1 : 0);
    }
}

}  // namespace brenvik::test
