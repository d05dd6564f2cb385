#pragma once
// The main window over a record that the test fills, with everything the user does written down.
#include <gtest/gtest.h>

#include <QApplication>
#include <QtTest/QTest>
#include <algorithm>
#include <functional>
#include <numeric>

#include "frame/text/Conversions.h"
#include "shell/main/frmBVK_Prog.h"
#include "shell/widgets/QtText.h"

namespace brenvik::test {

class EventLog : public WindowEvents {
public:
    std::vector<std::string> events;
    std::function<void(const std::string&)> reaction;    // what the engine does in answer
    bool mayClose = true;

    std::vector<std::string> take() { return std::exchange(events, {}); }

    void click() override { note("klick"); }
    bool beforeClose() override { note("beforeClose"); return mayClose; }
    bool beforeLeaving() override { note("beforeLeaving"); return mayClose; }
    void selectTab(int tab) override { note("tab", tab); }
    void selectNode(int node) override { note("node", node); }
    void clickRegSave(const std::string& caption) override { note("save", caption); }
    void clickDefault(const std::string& caption) override { note("default", caption); }
    void clickRegDel() override { note("delete"); }
    void userCheck(std::size_t panel, bool on) override { note("check", panel, on); }
    void userText(std::size_t panel, const std::string& text) override { note("text", panel, text); }
    void userNumber(std::size_t panel, std::int32_t value) override { note("number", panel, value); }
    void userNumberText(std::size_t panel, const std::string& text) override { note("numberText", panel, text); }
    void userChoose(std::size_t panel, int item) override { note("choose", panel, item); }
    void userBrowse(std::size_t panel) override { note("browse", panel); }
    void userColour(std::size_t panel) override { note("colour", panel); }
    void userTick(std::size_t panel, int row, bool on) override { note("tick", panel, row, on); }
    void userSelectRow(std::size_t panel, int row) override { note("row", panel, row); }
    void userSwitch(std::size_t panel, int box, bool on) override { note("switch", panel, box, on); }
    void userSwitchText(std::size_t panel, int box, const std::string& text) override { note("switchText", panel, box, text); }
    void userBootTitle(std::size_t panel, const std::string& text) override { note("title", panel, text); }

private:
    static std::string piece(const std::string& text) { return text; }
    static std::string piece(bool on) { return on ? "on" : "off"; }
    template <class T> static std::string piece(T number) { return std::to_string(number); }
    template <class... Args> void note(const std::string& name, Args... args) {
        std::string line = name;
        ((line += " " + piece(args)), ...);
        events.push_back(line);
        if (reaction) reaction(line);
    }
};

inline std::vector<int> sortedOrder(const MainWindow& record, int node) {
    const TreeNode& own = record.tvBVKDB.at(static_cast<std::size_t>(node));
    std::vector<int> order = own.kinder;
    if (own.Sorted)
        std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
            return compareText(record.tvBVKDB[static_cast<std::size_t>(a)].text, record.tvBVKDB[static_cast<std::size_t>(b)].text) < 0;
        });
    return order;
}

inline int addNode(MainWindow& record, int parent, const std::string& text, TreeNode::Art art, int symbol = 2) {
    const int node = static_cast<int>(record.tvBVKDB.size());
    record.tvBVKDB.push_back({text, art, static_cast<std::int16_t>(symbol), parent, false, {}});
    if (parent >= 0) record.tvBVKDB[static_cast<std::size_t>(parent)].kinder.push_back(node);
    return node;
}

// A panel of each kind, filled with something of every sort.
inline Panel panelOfKind(std::int16_t kind) {
    Panel p;
    p.Ausgabeart = kind;
    p.entries = {1};
    p.label = "Beschriftung";
    p.status = {"[Registry Wert vorhanden]", StatusColour::Gefunden};
    switch (kind) {
        case art::CheckBox: p.chkBeschriftung = "Aktivieren"; break;
        case art::TextWerte: p.text = "alt"; break;
        case art::ZahlenWerte: p.Min = 10; p.Max = 200; p.Value = 50; p.TickFrequency = 20; p.numberText = "50"; break;
        case art::AuswahlBox: p.selection = {"eins", "zwei", "drei"}; p.chosen = 0; break;
        case art::OptionsAuswahl: p.selection = {"nie", "immer", "manchmal"}; p.chosen = -1; break;
        case art::Drive: p.selection = {"Eigene Dateien", "Desktop"}; p.chosen = 0; p.text = "C:\\alt"; p.cmdDriveSichtbar = true; break;
        case art::Farbe: p.selection = {"Fenster", "Menü"}; p.chosen = 0; p.colour = Rgb{10, 20, 30}; break;
        case art::Liste: p.lines = {{"Access", "", false}, {"Maus", "", true}}; break;
        case art::Kontext: p.lines = {{"open", "Öffnen", false}, {"edit", "Bearbeiten", false}}; break;
        case art::BootINI:
            p.selection = {"Windows XP", "Windows 98"}; p.chosen = 0; p.txtBINI = "Windows XP";
            p.schalter = {{"/sos", true, false, ""}, {"/maxmem=", false, true, "128"}};
            break;
        case art::BitMaske: p.schalter = {{"Laufwerk A", false, false, ""}, {"Laufwerk B", true, false, ""}}; break;
        default: break;
    }
    return p;
}

class WindowFixture : public testing::Test {
protected:
    WindowFixture() : window(record, settings, sortedOrder) {
        addNode(record, -1, "Brenvik", TreeNode::Art::Root);
        window.attach(log);
        window.resize(900, 700);
        window.show();
    }

    template <class T> T& control(const char* name) {
        T* found = window.findChild<T*>(QString::fromUtf8(name));
        if (!found) throw std::runtime_error(std::string("no control ") + name);
        return *found;
    }

    void showPanels(std::vector<Panel> panels) {
        record.panels = std::move(panels);
        record.fraBVKLogo = false;
        record.fraEinstellungen = record.fraSteuerung = record.txtInfoSichtbar = true;
        window.panelsChanged();
        window.windowChanged();
        log.take();
    }

    MainWindow record;
    Settings settings;
    EventLog log;
    frmBVK_Prog window;
};

using Lines = std::vector<std::string>;

}  // namespace brenvik::test
