#include "shell/widgets/RegSearchArea.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QVBoxLayout>

#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int ShowEveryMs = 60;
constexpr int LongestText = 1'000;
constexpr int LinesShown = 6;

}  // namespace

RegSuchbereich::RegSuchbereich(RegBrowser& browser, QWidget* parent)
    : QFrame(parent), browser_(browser), txtRegSuche_(new QLineEdit(this)), chkSchluessel_(makeChoice("chkRegSuche(0)", QStringLiteral("Schlüssel"))),
      chkWertnamen_(makeChoice("chkRegSuche(1)", QStringLiteral("Wertnamen"))), chkDaten_(makeChoice("chkRegSuche(2)", QStringLiteral("Daten"))),
      cmdRegSuchen_(new QPushButton(this)), lvRegTreffer_(new QTreeView(this)), hits_(new RegTrefferModel(this)), lblRegTreffer_(new QLabel(this)) {
    setObjectName(QStringLiteral("fraRegSuche"));
    setFrameShape(QFrame::StyledPanel);
    auto* box = new QVBoxLayout(this);
    box->addLayout(makeQuestion());
    lvRegTreffer_->setObjectName(QStringLiteral("lvRegTreffer"));
    lvRegTreffer_->setAccessibleName(QStringLiteral("Treffer"));
    lvRegTreffer_->setModel(hits_);
    lvRegTreffer_->setRootIsDecorated(false);
    lvRegTreffer_->setUniformRowHeights(true);
    lvRegTreffer_->setAlternatingRowColors(true);
    lvRegTreffer_->setTabKeyNavigation(false);
    lvRegTreffer_->setMinimumHeight(lvRegTreffer_->fontMetrics().lineSpacing() * LinesShown);
    lvRegTreffer_->header()->resizeSection(0, 320);
    lvRegTreffer_->header()->resizeSection(1, 140);
    box->addWidget(lvRegTreffer_, 1);
    lblRegTreffer_->setObjectName(QStringLiteral("lblRegTreffer"));
    lblRegTreffer_->setTextFormat(Qt::PlainText);
    box->addWidget(lblRegTreffer_);
    connect(cmdRegSuchen_, &QPushButton::clicked, this, &RegSuchbereich::search);
    connect(txtRegSuche_, &QLineEdit::returnPressed, this, &RegSuchbereich::search);
    connect(lvRegTreffer_, &QTreeView::activated, this, [this](const QModelIndex& index) {
        if (const BrowserTreffer* hit = hits_->at(index)) emit chosen(BrowserTreffer(*hit));
    });
}

QCheckBox* RegSuchbereich::makeChoice(const char* name, const QString& caption) {
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(QLatin1String(name));
    box->setChecked(true);
    return box;
}

QLayout* RegSuchbereich::makeQuestion() {
    auto* row = new QHBoxLayout;
    auto* caption = new QLabel(QStringLiteral("&Suchen nach:"), this);
    caption->setBuddy(txtRegSuche_);
    txtRegSuche_->setObjectName(QStringLiteral("txtRegSuche"));
    txtRegSuche_->setAccessibleName(QStringLiteral("Suchen nach"));
    txtRegSuche_->setMaxLength(LongestText);
    cmdRegSuchen_->setObjectName(QStringLiteral("cmdRegSuchen"));
    cmdRegSuchen_->setText(QStringLiteral("S&uche starten"));
    cmdRegSuchen_->setAutoDefault(false);
    row->addWidget(caption);
    row->addWidget(txtRegSuche_, 1);
    for (QCheckBox* box : {chkSchluessel_, chkWertnamen_, chkDaten_}) row->addWidget(box);
    row->addWidget(cmdRegSuchen_);
    return row;
}

void RegSuchbereich::open(const std::string& key) {
    setKey(key);
    show();
    txtRegSuche_->setFocus();
    txtRegSuche_->selectAll();
}

void RegSuchbereich::setKey(const std::string& key) {
    key_ = key;
    if (!running_ && hits_->rowCount() == 0) lblRegTreffer_->setText(QStringLiteral("Gesucht wird unter %1").arg(plainLine(key_)));
}

void RegSuchbereich::showProgress(const std::string& key) {
    lblRegTreffer_->setText(lblRegTreffer_->fontMetrics().elidedText(
        QStringLiteral("%1 Treffer, gesucht wird in %2").arg(hits_->rowCount()).arg(plainLine(key)), Qt::ElideMiddle, lblRegTreffer_->width()));
    QCoreApplication::processEvents();
}

void RegSuchbereich::search() {
    if (running_) return cancel();
    BrowserSuche wanted{utf8(txtRegSuche_->text()), chkSchluessel_->isChecked(), chkWertnamen_->isChecked(), chkDaten_->isChecked()};
    hits_->clear();
    if (wanted.text.empty() || key_.empty() || !(wanted.keys || wanted.names || wanted.data))
        return lblRegTreffer_->setText(QStringLiteral("Bitte geben Sie einen Text ein und wählen Sie, wo gesucht wird."));
    running_ = true;
    cancelled_ = false;
    cmdRegSuchen_->setText(QStringLiteral("&Anhalten"));
    emit started();
    std::vector<BrowserTreffer> fresh;
    QElapsedTimer sinceShown;
    sinceShown.start();
    browser_.search(key_, wanted, [&](BrowserTreffer hit) { fresh.push_back(std::move(hit)); },
                    [&](const std::string& present) {
                        if (sinceShown.elapsed() < ShowEveryMs) return cancelled_;
                        hits_->append(std::exchange(fresh, {}));
                        showProgress(present);
                        sinceShown.restart();
                        return cancelled_;
                    });
    hits_->append(std::move(fresh));
    running_ = false;
    cmdRegSuchen_->setText(QStringLiteral("S&uche starten"));
    const std::size_t count = static_cast<std::size_t>(hits_->rowCount());
    QString text = count == 1 ? QStringLiteral("1 Treffer") : QStringLiteral("%1 Treffer").arg(count);
    if (cancelled_) text += QStringLiteral(", die Suche wurde angehalten");
    else if (count >= RegBrowser::MostHits) text += QStringLiteral(", weitere werden nicht gezeigt");
    lblRegTreffer_->setText(text);
    emit finished();
    if (count == 0) return txtRegSuche_->setFocus();
    lvRegTreffer_->setCurrentIndex(hits_->index(0, 0));
    lvRegTreffer_->setFocus();
}

}  // namespace brenvik
