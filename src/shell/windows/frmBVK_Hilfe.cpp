#include "shell/windows/frmBVK_Hilfe.h"

#include <QAction>
#include <QEvent>
#include <QFile>
#include <QFileInfo>
#include <QHeaderView>
#include <QScrollBar>
#include <QSplitter>
#include <QTextDocument>
#include <QVBoxLayout>

#include "frame/program/HelpTopics.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr qint64 LargestPage = 1'000'000;      // bytes; ours are a few thousand
constexpr int PictureSize = 18;
constexpr int RowPadding = 6;
constexpr char IconScheme[] = "icon";
// No colours: the palette's serve light and dark.
constexpr char PageStyle[] =
    "h1 { font-size: x-large; margin-bottom: 10px; } h2 { font-size: large; margin-top: 16px; margin-bottom: 4px; }"
    "p, li { line-height: 125%; } li { margin-bottom: 3px; } code { font-family: monospace; } table { margin-top: 6px; margin-bottom: 8px; } td, th { padding: 5px; } th { text-align: left; }"
    "a { text-decoration: none; } img { vertical-align: middle; }";

struct ToolEntry {
    const char* name;
    const char* text;
    const char* icon;
};
constexpr ToolEntry Back{"tbrZurück", "Zurück", "zurueck"}, Forward{"tbrVor", "Vor", "vor"}, Home{"tbrInhalt", "Inhalt", "inhalt"};

QString fileOf(const QTreeWidgetItem& item) { return item.data(0, Qt::UserRole).toString(); }

}  // namespace

// A page is a page of ours, and its pictures are icons; it reaches no other file.
QVariant HelpText::loadResource(int type, const QUrl& name) {
    if (name.scheme() != QLatin1String(IconScheme)) {
        const bool page = type == QTextDocument::HtmlResource && helpPage(name.fileName()) && name.toLocalFile() == QFileInfo(folder_ + QLatin1Char('/') + name.fileName()).absoluteFilePath();
        return page ? QTextBrowser::loadResource(type, name) : QVariant();
    }
    const QPixmap picture = icons_.get(name.path()).pixmap(QSize(PictureSize, PictureSize), devicePixelRatioF());
    return picture.isNull() ? QVariant() : QVariant(picture);
}

frmBVK_Hilfe::frmBVK_Hilfe(const std::filesystem::path& folder, std::function<bool(const std::string&)> openAddress, QWidget* parent)
    : QDialog(parent, Qt::Window), folder_(qt(folder.string())), openAddress_(std::move(openAddress)), icons_(palette()),
      toolbar_(new QToolBar(this)), txtHilfeSuche_(new QLineEdit(this)), tvContents_(new QTreeWidget(this)), lblHint_(new QLabel(this)),
      txtHilfe_(new HelpText(folder_, icons_, this)) {
    setObjectName(QStringLiteral("frmBVK_Hilfe"));
    setWindowTitle(QStringLiteral("Brenvik Hilfe"));
    setWindowIcon(IconSet::program());
    lblHint_->setObjectName(QStringLiteral("lblHinweis"));
    lblHint_->setWordWrap(true);
    lblHint_->setTextFormat(Qt::PlainText);
    lblHint_->setMargin(6);
    lblHint_->hide();
    txtHilfe_->setObjectName(QStringLiteral("txtHilfe"));
    txtHilfe_->setAccessibleName(QStringLiteral("Hilfeseite"));
    txtHilfe_->setOpenLinks(false);
    txtHilfe_->document()->setDefaultStyleSheet(QLatin1String(PageStyle));
    txtHilfe_->document()->setDocumentMargin(14);

    auto* right = new QWidget(this);
    auto* rightBox = new QVBoxLayout(right);
    rightBox->setContentsMargins(0, 0, 0, 0);
    rightBox->addWidget(lblHint_);
    rightBox->addWidget(txtHilfe_, 1);
    auto* splitter = new QSplitter(this);
    splitter->addWidget(makeContents());
    splitter->addWidget(right);
    splitter->setStretchFactor(1, 1);
    splitter->setSizes({250, 610});
    splitter->setChildrenCollapsible(false);
    makeToolbar();
    auto* box = new QVBoxLayout(this);
    box->setContentsMargins(6, 2, 6, 6);
    box->addWidget(toolbar_);
    box->addWidget(splitter, 1);
    resize(860, 620);
    connect(txtHilfe_, &QTextBrowser::anchorClicked, this, [this](const QUrl& link) { follow(link); });
    connect(txtHilfe_, &QTextBrowser::sourceChanged, this, [this](const QUrl& source) { pageShown(source.fileName()); });
}

void frmBVK_Hilfe::makeToolbar() {
    toolbar_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    const auto add = [this](const ToolEntry& entry, const QKeySequence& key, auto slot) {
        QAction* action = toolbar_->addAction(QString::fromUtf8(entry.text));
        action->setObjectName(QString::fromUtf8(entry.name));
        action->setShortcut(key);
        action->setData(QLatin1String(entry.icon));
        action->setToolTip(QStringLiteral("%1 (%2)").arg(action->text(), key.toString(QKeySequence::NativeText)));
        connect(action, &QAction::triggered, this, slot);
        return action;
    };
    QAction* back = add(Back, QKeySequence(Qt::ALT | Qt::Key_Left), [this] { txtHilfe_->backward(); });
    QAction* forward = add(Forward, QKeySequence(Qt::ALT | Qt::Key_Right), [this] { txtHilfe_->forward(); });
    add(Home, QKeySequence(Qt::ALT | Qt::Key_Home), [this] { showTopic(helpTopic::Contents); });
    back->setEnabled(false);
    forward->setEnabled(false);
    connect(txtHilfe_, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    connect(txtHilfe_, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    auto* find = new QAction(this);
    find->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_F));
    connect(find, &QAction::triggered, txtHilfeSuche_, [this] {
        txtHilfeSuche_->setFocus();
        txtHilfeSuche_->selectAll();
    });
    addAction(find);
    refreshIcons();
}

QWidget* frmBVK_Hilfe::makeContents() {
    auto* left = new QWidget(this);
    txtHilfeSuche_->setObjectName(QStringLiteral("txtHilfeSuche"));
    txtHilfeSuche_->setPlaceholderText(QStringLiteral("In der Hilfe suchen (Strg+F)"));
    txtHilfeSuche_->setAccessibleName(QStringLiteral("In der Hilfe suchen"));
    txtHilfeSuche_->setClearButtonEnabled(true);
    tvContents_->setObjectName(QStringLiteral("tvInhalt"));
    tvContents_->setAccessibleName(QStringLiteral("Inhalt"));
    tvContents_->setHeaderHidden(true);
    tvContents_->setIndentation(14);
    const QSize row(0, fontMetrics().height() + RowPadding);
    QHash<QString, QTreeWidgetItem*> chapters;
    for (const HelpPage& page : helpPages()) {
        const QString chapter = QString::fromUtf8(page.chapter);
        QTreeWidgetItem* parent = tvContents_->invisibleRootItem();
        if (!chapter.isEmpty()) {
            if (!chapters.contains(chapter)) {
                auto* heading = new QTreeWidgetItem(tvContents_, {chapter});
                heading->setFlags(Qt::ItemIsEnabled);
                heading->setSizeHint(0, row);
                chapters.insert(chapter, heading);
            }
            parent = chapters.value(chapter);
        }
        auto* item = new QTreeWidgetItem(parent, {QString::fromUtf8(page.titel)});
        item->setData(0, Qt::UserRole, QLatin1String(page.datei));
        item->setToolTip(0, item->text(0));
        item->setSizeHint(0, row);
    }
    tvContents_->expandAll();
    auto* box = new QVBoxLayout(left);
    box->setContentsMargins(0, 0, 0, 0);
    box->addWidget(txtHilfeSuche_);
    box->addWidget(tvContents_, 1);
    connect(txtHilfeSuche_, &QLineEdit::textChanged, this, [this](const QString& text) { search(text); });
    connect(tvContents_, &QTreeWidget::currentItemChanged, this, [this](QTreeWidgetItem* item) {
        if (item && !fileOf(*item).isEmpty() && fileOf(*item) != page_) showPage(fileOf(*item));
    });
    return left;
}

QString frmBVK_Hilfe::pathOf(const QString& file) const { return folder_ + QLatin1Char('/') + file; }

void frmBVK_Hilfe::showTopic(int topic) {
    const HelpPage* page = helpPage(topic);
    showPage(QLatin1String((page ? page : helpPage(helpTopic::Contents))->datei));
    if (!page) note(QStringLiteral("Zum Thema Nr. %1 gibt es in dieser Hilfe keine Seite. Vielleicht finden Sie es im Inhalt.").arg(topic));
}

void frmBVK_Hilfe::showPage(const QString& file, const QString& anchor) {
    note({});
    const QFileInfo info(pathOf(file));
    if (!info.isFile() || !info.isReadable() || info.size() > LargestPage) {
        note(QStringLiteral("Die Hilfeseite \"%1\" wurde nicht gefunden oder kann nicht gelesen werden. Bitte überprüfen Sie die Installation.").arg(info.filePath()));
        return;
    }
    QUrl url = QUrl::fromLocalFile(info.absoluteFilePath());
    if (!anchor.isEmpty()) url.setFragment(anchor);
    txtHilfe_->setSource(url, QTextDocument::HtmlResource);
}

// A page may lead to another page and out into the web, never to any other file.
void frmBVK_Hilfe::follow(const QUrl& link) {
    if (link.isRelative() || link.isLocalFile()) {
        const QString file = link.fileName().isEmpty() ? page_ : link.fileName();
        if (helpPage(file)) return showPage(file, link.fragment());
        return note(QStringLiteral("Die Hilfeseite \"%1\" gibt es nicht.").arg(file));
    }
    if (!openAddress_(utf8(link.toString()))) note(QStringLiteral("Die Adresse %1 konnte nicht geöffnet werden.").arg(link.toString()));
}

void frmBVK_Hilfe::pageShown(const QString& file) {
    page_ = file;
    for (QTreeWidgetItemIterator it(tvContents_); *it; ++it)
        if (fileOf(**it) == file) tvContents_->setCurrentItem(*it);
    const HelpPage* page = helpPage(file);
    setWindowTitle(page ? QStringLiteral("%1 - Brenvik Hilfe").arg(QString::fromUtf8(page->titel)) : QStringLiteral("Brenvik Hilfe"));
}

bool frmBVK_Hilfe::pageHolds(const QString& file, const QStringList& words) {
    if (!texts_.contains(file)) {
        QFile page(pathOf(file));
        QTextDocument document;
        if (page.open(QIODevice::ReadOnly)) document.setHtml(QString::fromUtf8(page.read(LargestPage)));
        texts_.insert(file, document.toPlainText());
    }
    const QString& text = texts_[file];
    return std::all_of(words.begin(), words.end(), [&text](const QString& word) { return text.contains(word, Qt::CaseInsensitive); });
}

// Leaves in the contents what holds all the words.
void frmBVK_Hilfe::search(const QString& text) {
    const QStringList words = text.split(QLatin1Char(' '), Qt::SkipEmptyParts);
    int hits = 0;
    const auto filter = [&](QTreeWidgetItem* item) {
        const bool shown = words.isEmpty() || pageHolds(fileOf(*item), words);
        item->setHidden(!shown);
        hits += shown;
        return shown;
    };
    for (int i = 0; i < tvContents_->topLevelItemCount(); ++i) {
        QTreeWidgetItem* top = tvContents_->topLevelItem(i);
        if (!fileOf(*top).isEmpty()) {
            filter(top);
            continue;
        }
        bool any = false;
        for (int k = 0; k < top->childCount(); ++k) any = filter(top->child(k)) || any;
        top->setHidden(!any);
    }
    note(hits == 0 ? QStringLiteral("Keine Hilfeseite enthält \"%1\".").arg(text) : QString());
}

void frmBVK_Hilfe::note(const QString& text) {
    lblHint_->setText(plainLine(utf8(text)));
    lblHint_->setVisible(!text.isEmpty());
}

void frmBVK_Hilfe::refreshIcons() {
    for (QAction* action : toolbar_->actions()) action->setIcon(icons_.get(action->data().toString()));
}

void frmBVK_Hilfe::changeEvent(QEvent* event) {
    QDialog::changeEvent(event);
    if (event->type() != QEvent::PaletteChange) return;
    icons_.setPalette(palette());
    refreshIcons();
    txtHilfe_->document()->clear();     // the pictures on the page were made for the old colours
    txtHilfe_->reload();
}

}  // namespace brenvik
