#pragma once
// The whole program with its real window, on the shipped data and a home of its own; boxes and choices are answered by the test.
#include <gtest/gtest.h>

#include <QApplication>
#include <QtTest/QTest>
#include <deque>

#include "registry/Settings.h"
#include "registry/ValueOperations.h"
#include "shell/program/WindowProgram.h"
#include "shell/widgets/QtText.h"
#include "shell/windows/frmBVK_HistoryDaten.h"
#include "shell/windows/frmBVK_HistoryListe.h"
#include "support/TempDir.h"
#include "support/TestPlatform.h"

namespace brenvik::test {

// Shows the windows of the program, but answers boxes by itself and starts nothing.
class AnswerPort : public QtPort {
public:
    std::deque<std::pair<std::string, Answer>> answers;      // part of the text, answer; in their order
    std::vector<std::string> boxes, sounds, programs, addresses;
    std::optional<Rgb> colour;
    std::optional<std::string> folder;
    bool programsStart = true;

    AnswerPort& expect(std::string part, Answer answer = Answer::OK) { return answers.emplace_back(std::move(part), answer), *this; }
    Answer messageBox(const MessageBox& request) override {
        boxes.push_back(request.text);
        if (answers.empty()) return ADD_FAILURE() << "unexpected box: " << request.text, Answer::No;
        const auto [part, answer] = answers.front();
        answers.pop_front();
        EXPECT_NE(request.text.find(part), std::string::npos) << "\"" << request.text << "\" came, \"" << part << "\" was laid down";
        return answer;
    }
    std::optional<Rgb> chooseColour(Rgb) override { return colour; }
    std::optional<std::string> chooseFolder(std::string_view, std::string_view) override { return std::exchange(folder, std::nullopt); }
    void sleepMs(int) override {}
    void playSound(const std::string& file) override { sounds.push_back(file); }
    bool startProgram(const std::string& program, const std::vector<std::string>& arguments) override {
        programs.push_back(program);
        for (const std::string& argument : arguments) programs.back() += " " + argument;
        return programsStart;
    }
    bool openAddress(const std::string& url) override { return addresses.push_back(url), programsStart; }
};

class ProgramFixture : public testing::Test {
protected:
    ProgramFixture() { platform.home = home.path(); platform.programDirectory = BRENVIK_PROGRAMM_DIR; }
    ~ProgramFixture() override {
        end();
        EXPECT_TRUE(port.answers.empty()) << "never asked: " << port.answers.front().first;
    }
    // Widgets that wait for their removal go before what they draw.
    void end() {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        program.reset();
    }

    bool start(const std::string& line = {}) {
        WindowOptions options;
        options.program.home = home.path();
        options.commandLineText = line;
        program = std::make_unique<WindowProgram>(*qApp, options, port, platform);
        SaveRegistryKey(ctx(), std::string(SettingsPath) + "ShowInfo", "False", 1);
        return program->start();
    }
    Context& ctx() { return program->program().context(); }
    frmBVK_Prog& window() { return program->windows(); }
    TipEngine& engine() { return program->program().engine(); }

    template <class T> T& control(const std::string& name) {
        T* found = window().findChild<T*>(qt(name));
        if (!found) throw std::runtime_error("no control " + name);
        return *found;
    }
    void press(const char* name) {
        EXPECT_TRUE(control<QPushButton>(name).isEnabled()) << name;
        QTest::mouseClick(&control<QPushButton>(name), Qt::LeftButton);
    }
    void menu(const char* name) { window().menus().action(QLatin1String(name))->trigger(); }
    // The window that comes with a request, driven and gone afterwards.
    template <class Window, class Request> void inWindow(const char* name, std::function<void(Window&)> act) {
        port.registerWindow(QLatin1String(name), [act = std::move(act)](QtPort&, QWidget* parent, WindowRequest& request) {
            Window dialog(dynamic_cast<Request&>(request), parent);
            dialog.show();
            act(dialog);
        });
    }
    static void pressIn(QWidget& dialog, const char* name) {
        auto* button = dialog.findChild<QPushButton*>(QString::fromUtf8(name));
        ASSERT_TRUE(button && button->isEnabled()) << name;
        QTest::mouseClick(button, Qt::LeftButton);
    }
    // The newest change, through the windows of the history.
    void takeBack() {
        inWindow<frmBVK_HistoryListe, HistoryListeRequest>("frmBVK_HistoryListe", [](frmBVK_HistoryListe& list) {
            pressIn(list, "cmdHisAnzeigen");
            pressIn(list, "cmdHisZurück");
        });
        inWindow<frmBVK_HistoryDaten, HistoryDatenRequest>("frmBVK_HistoryDaten", [](frmBVK_HistoryDaten& values) { pressIn(values, "cmdDatenGenau"); });
        port.expect("Alle Werte stehen wieder genau so da");
        window().coolBar().button("tbrHistory")->trigger();
        EXPECT_TRUE(port.answers.empty());
    }
    void clickNode(const std::string& text) {
        auto& tree = control<TipTreeView>("tvBVKDB");
        const auto root = tree.model()->index(0, 0);
        const auto hits = root.data().toString() == qt(text) ? QModelIndexList{root} : tree.model()->match(root, Qt::DisplayRole, qt(text), 1, Qt::MatchExactly | Qt::MatchRecursive);
        ASSERT_EQ(hits.size(), 1) << text;
        tree.scrollTo(hits[0]);
        QTest::mouseClick(tree.viewport(), Qt::LeftButton, {}, tree.visualRect(hits[0]).intersected(tree.viewport()->rect()).center());
        EXPECT_EQ(ctx().frmBVK_Prog.tvBVKDB.at(static_cast<std::size_t>(ctx().frmBVK_Prog.selectedNode)).text, text);
    }

    TempDir home;
    test::TestPlatform platform;
    AnswerPort port;
    std::unique_ptr<WindowProgram> program;
};

}  // namespace brenvik::test
