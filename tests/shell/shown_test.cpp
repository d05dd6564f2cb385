// Whatever stands in a database, a registry or a list: the windows show it plain, with marks for what nobody sees, and soon.
#include <QAbstractItemModel>
#include <QCheckBox>
#include <QElapsedTimer>
#include <QGroupBox>
#include <QHelpEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QScreen>
#include <QTextFrame>
#include <QTextDocument>
#include <QTimer>
#include <QToolTip>
#include <fstream>

#include "DialogFixture.h"
#include "WindowFixture.h"
#include "ProgramFixture.h"
#include "export/TippFileSaveRequest.h"
#include "frame/files/FileSystem.h"
#include "frame/text/ShownText.h"
#include "lists/ListWindows.h"
#include "shell/tipwindows/frmBVK_Bearbeiten.h"
#include "shell/tipwindows/frmBVK_BootINI.h"
#include "shell/tipwindows/frmBVK_Datentyp.h"
#include "shell/tipwindows/frmBVK_KeyInfo.h"
#include "shell/tipwindows/frmBVK_REGEdit.h"
#include "shell/tipwindows/frmBVK_RegName.h"
#include "shell/tipwindows/frmBVK_TippFileSave.h"
#include "shell/widgets/FieldText.h"
#include "shell/widgets/PlainText.h"
#include "shell/windows/frmBVK_FavVerwalten.h"
#include "shell/windows/frmBVK_Hilfe.h"
#include "shell/windows/frmBVK_RegBrowse.h"
#include "shell/windows/frmBVK_Suchen.h"

namespace brenvik::test {
namespace {

std::string times(int count, const std::string& text) {
    std::string all;
    for (int i = 0; i < count; ++i) all += text;
    return all;
}

const std::vector<std::string>& hostileTexts() {
    static const std::vector<std::string> texts{
        "<img src=\"file:///dev/zero\">x", times(40, "<table><tr><td>") + "x", "C:\\x.exe <b></b><!-- ,C:\\y.exe /run -->", "&lt;img src=a&gt; A&B\tC",
        "<?xml version='1.0'?><p>x</p>", "a\x1B[2J\u0085\u202Efdp.exe\u2069\r\nz", std::string(1'000'000, 'W'), times(300'000, "<b>"), times(200'000, "x\n"),
    };
    return texts;
}

// As Qt lays rich text out; what it asks for on the way is written down.
class Tip : public QTextDocument {
public:
    explicit Tip(const QString& html) {
        setHtml(html);
        adjustSize();
    }
    QStringList asked;

protected:
    QVariant loadResource(int, const QUrl& name) override { return asked << name.toString(), QVariant(); }
};

void checkTip(const QString& tip) {
    EXPECT_LE(tip.size(), 20'000);
    if (!Qt::mightBeRichText(tip)) return;
    const Tip laidOut(tip);
    EXPECT_TRUE(laidOut.asked.isEmpty()) << laidOut.asked.join(' ').toStdString();
    EXPECT_TRUE(laidOut.rootFrame()->childFrames().isEmpty()) << tip.left(200).toStdString();
}

void checkText(const QString& text, qsizetype most = MostInLine + 200) {
    EXPECT_LE(text.size(), most);
    EXPECT_FALSE(hasUnseen(utf8(text))) << text.left(200).toStdString();
}

void checkModel(const QAbstractItemModel& model, const QModelIndex& parent = {}, int depth = 0) {
    for (int row = 0; row < std::min(20, model.rowCount(parent)); ++row) {
        for (int column = 0; column < model.columnCount(parent); ++column) {
            const QModelIndex index = model.index(row, column, parent);
            for (const int role : {Qt::DisplayRole, Qt::AccessibleTextRole}) checkText(index.data(role).toString());
            checkTip(index.data(Qt::ToolTipRole).toString());
        }
        if (depth < 4) checkModel(model, model.index(row, 0, parent), depth + 1);
    }
}

// The way of a real tool tip, as the mouse brings it.
void hover(QAbstractItemView& view) {
    const QModelIndex first = view.model() ? view.model()->index(0, 0) : QModelIndex();
    if (!first.isValid()) return;
    const QPoint place = view.visualRect(first).center();
    QHelpEvent event(QEvent::ToolTip, place, view.viewport()->mapToGlobal(place));
    QApplication::sendEvent(view.viewport(), &event);
    checkTip(QToolTip::text());
    QToolTip::hideText();
}

void checkWidget(QWidget& widget) {
    SCOPED_TRACE(widget.objectName().toStdString());
    checkText(widget.windowTitle());
    checkText(widget.accessibleName());
    checkText(widget.accessibleDescription());
    checkTip(widget.toolTip());
    checkTip(widget.whatsThis());
    for (const QAction* action : widget.actions()) checkText(action->text());
    if (const auto* label = qobject_cast<QLabel*>(&widget)) {
        checkText(label->text(), MostInBox + 200);
        EXPECT_TRUE(label->textFormat() == Qt::PlainText || !Qt::mightBeRichText(label->text()));
    } else if (const auto* button = qobject_cast<QAbstractButton*>(&widget)) {
        checkText(button->text(), 2 * MostInLine);
    } else if (const auto* field = qobject_cast<QLineEdit*>(&widget)) {
        if (field->isReadOnly()) checkText(field->text(), 1'000'000);
    } else if (const auto* lines = qobject_cast<QPlainTextEdit*>(&widget)) {
        if (lines->isReadOnly()) checkText(lines->toPlainText(), MostInLines + 200);
    } else if (const auto* combo = qobject_cast<QComboBox*>(&widget)) {
        for (int i = 0; i < std::min(20, combo->count()); ++i) checkText(combo->itemText(i));
    } else if (auto* view = qobject_cast<QAbstractItemView*>(&widget); view && view->isVisible()) {
        checkModel(*view->model());
        hover(*view);
    }
}

void checkWindow(QWidget& window) {
    QElapsedTimer timer;
    timer.start();
    window.show();
    window.grab();
    checkWidget(window);
    for (QWidget* widget : window.findChildren<QWidget*>()) checkWidget(*widget);
    EXPECT_LT(timer.elapsed(), 20'000) << "a second at most, but tests run side by side";
}

class Hostile : public WindowFixture, public testing::WithParamInterface<std::size_t> {
protected:
    const std::string& text() const { return hostileTexts().at(GetParam()); }
};

TEST_P(Hostile, MainWindow) {
    for (const auto kind : {TreeNode::Art::Gruppe, TreeNode::Art::Tipp}) addNode(record, 0, text(), kind);
    record.lblDBTippU = record.txtInfo = record.fraInfo = text();
    record.sbrBVK = {text(), text(), text()};
    std::vector<Panel> panels;
    for (std::int16_t kind = art::CheckBox; kind <= art::BitMaske; ++kind) {
        Panel panel = panelOfKind(kind);
        panel.label = panel.chkBeschriftung = panel.status.text = panel.text = panel.txtBINI = text();
        for (std::string& choice : panel.selection) choice = text();
        for (ListLine& row : panel.lines) row.text = row.subText = text();
        for (SwitchField& field : panel.schalter) field.beschriftung = field.wert = text();
        panels.push_back(std::move(panel));
    }
    window.treeChanged();
    showPanels(panels);
    checkWindow(window);
    if (text().starts_with("&lt;")) {
        EXPECT_EQ(control<QCheckBox>("chkCheckBox(0)").text(), "&&lt;img src=a&&gt; A&&B␉C");
    }
}

TEST_P(Hostile, Dialogs) {
    const std::string& evil = text();
    ScriptedPort port;
    DatentypRequest type;
    type.tipNumber = type.typeDatabase = type.typeRegistry = type.contents = evil;
    checkWindow(*std::make_unique<frmBVK_Datentyp>(port, type, nullptr));
    BearbeitenRequest entry;
    entry.neu = false;
    entry.txtKeyName = entry.txtBeschreibung = entry.txtBefehl = evil;
    checkWindow(*std::make_unique<frmBVK_Bearbeiten>(entry, nullptr));
    BootINIRequest boot;
    boot.txtBootWert = evil;
    checkWindow(*std::make_unique<frmBVK_BootINI>(port, boot, nullptr));
    HistoryListeRequest history;
    history.lines = {{1, 0}, {2, 0}};
    history.zeile = [&](std::size_t) { return HistoryListeRequest::Zeile{evil, evil, evil, evil}; };
    checkWindow(*std::make_unique<frmBVK_HistoryListe>(history, nullptr));
    HistoryDatenRequest values;
    values.lines = {{evil, evil, evil}};
    values.hint = evil;
    checkWindow(*std::make_unique<frmBVK_HistoryDaten>(values, nullptr));
    FavVerwaltenRequest favourites;
    favourites.lvFav = {evil, evil};
    checkWindow(*std::make_unique<frmBVK_FavVerwalten>(favourites, nullptr));
    TippFileSaveRequest list;
    list.lvRegList = {evil, evil};
    checkWindow(*std::make_unique<frmBVK_TippFileSave>(list, nullptr));
    SuchenRequest search;
    search.suchen = [&](const SearchOrder&) { return SearchResult{SearchResult::Art::Sought, {{1, evil}}}; };
    const auto found = std::make_unique<frmBVK_Suchen>(search, nullptr);
    found->show();
    QTest::keyClick(&named<QLineEdit>(*found, "txtSuchText"), Qt::Key_Return);
    EXPECT_EQ(named<QTreeView>(*found, "lvSuchergebnis").model()->rowCount(), 1);
    checkWindow(*found);
    REGEditRequest value;
    value.ItemKey = value.ItemName = evil;
    value.ItemWert = fromText(evil, regtype::Sz);
    checkWindow(*std::make_unique<frmBVK_REGEdit>(port, value, nullptr));
    RegNameRequest name;
    name.name = evil;
    checkWindow(*std::make_unique<frmBVK_RegName>(name, nullptr));
    Tipp tipp;
    tipp.Eintrag.resize(2);
    tipp.Eintrag[1].Hauptschlüssel = tipp.Eintrag[1].Schlüssel = tipp.Eintrag[1].Wertname = evil;
    EngineFixture probe({{.Index = 1, .Überschrift = "Tipp"}});
    checkWindow(*std::make_unique<frmBVK_KeyInfo>(*probe.ctx, tipp, nullptr));
    IconSet icons(qApp->palette());
    RegHitModel hits(nullptr);
    hits.append({{evil, evil, evil}});
    checkModel(hits);
}

TEST_P(Hostile, RegistryBrowser) {
    EngineFixture probe({{.Index = 1, .Überschrift = "Tipp"}});
    std::string name = text().substr(0, 199);     // ends in no line break, which a typed path does not keep
    std::replace(name.begin(), name.end(), '\\', '/');
    const std::string key = "HKEY_CURRENT_USER\\Software\\Probe\\" + name;
    probe.put(key + "\\" + name, 1, text());
    probe.put(key + "\\" + name + "\\Wert", 1, text());
    const auto browser = makeRegBrowser(*probe.ctx, probe.recorder);
    RegBrowseRequest request(*browser);
    frmBVK_RegBrowse browse(probe.port, request, nullptr);
    browse.show();
    auto& path = named<QLineEdit>(browse, "txtPfad");
    path.setText(qt(key));
    QTest::keyClick(&path, Qt::Key_Return);
    EXPECT_EQ(named<QTreeView>(browse, "lvwReg").model()->rowCount(), 2);
    checkWindow(browse);
    EXPECT_EQ(named<QLabel>(browse, "sbrReg").text().contains("Enthält Zeichen, die hier nicht zu sehen sind"), hasUnseen(name));
}

TEST_P(Hostile, BoxesAndHelp) {
    QtPort port;
    QTimer::singleShot(0, qApp, [] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        ASSERT_NE(box, nullptr);
        checkWindow(*box);
        EXPECT_EQ(box->textFormat(), Qt::PlainText);
        EXPECT_LE(box->text().count('\n'), 45) << "the buttons stay on the screen";
        box->buttons().constFirst()->click();
    });
    port.messageBox({text(), box::OK, text()});
    frmBVK_Hilfe help(std::filesystem::path(BRENVIK_PROGRAMM_DIR) / "hilfe", [](const std::string&) { return true; });
    help.show();
    named<QLineEdit>(help, "txtHilfeSuche").setText(qt(text().substr(0, 1'000)));
    checkWindow(help);
}

INSTANTIATE_TEST_SUITE_P(Texts, Hostile, testing::Range<std::size_t>(0, 9));

TEST_F(ProgramFixture, HostileFavourites) {
    std::string lines;
    for (const std::string& text : hostileTexts()) lines += text.substr(0, 5'000) + "\r\n";
    ASSERT_TRUE(start());
    std::ofstream(userPath(ctx(), ctx().einstellungen.strFavoritenPfad + "/Favoriten.txt"), std::ios::binary) << lines;
    end();
    ASSERT_TRUE(start());
    const auto* entries = window().menus().menu("mnuFavListe");
    ASSERT_GT(entries->actions().size(), 8);
    for (const QAction* action : entries->actions()) checkText(action->text(), 2 * MostInLine);
    EXPECT_EQ(entries->actions().at(3)->text(), "&&lt;img src=a&&gt; A&&B␉C");
    checkWindow(window());
}

// What is shown is the text, character for character, where it is not cut.
TEST(ToolTips, SayWhatStandsThere) {
    for (const std::string& text : hostileTexts()) {
        const QString tip = toolTipText(text);
        QString said = Qt::mightBeRichText(tip) ? Tip(tip).toPlainText() : tip;
        said.remove(QChar(0x200B));
        const QString expected = plainLines(text, MostInTip).section('\n', 0, 19);
        EXPECT_EQ(said.left(expected.size()), expected);
        EXPECT_LE(said.size() - expected.size(), 2) << "but for the mark of the cut";
    }
    EXPECT_EQ(toolTipText(std::string_view("Einfacher Text")), "Einfacher Text");
    EXPECT_EQ(Tip(toolTipText(std::string_view("a  <b>\n c"))).toPlainText(), "a  <b>\n c") << "blanks stay";
}

TEST(Fields, GiveBackWhatTheyWereGiven) {
    QPlainTextEdit field;
    const QString text = QString::fromUtf8("a\u00A0b\n\u2028c");
    field.setPlainText(text);
    EXPECT_EQ(fieldText(field), text);
}

}  // namespace
}  // namespace brenvik::test
