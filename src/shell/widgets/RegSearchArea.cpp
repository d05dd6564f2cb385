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

RegSearchArea::RegSearchArea(RegBrowser& browser, QWidget* parent)
    : QFrame(parent), browser_(browser), txtRegSuche_(new QLineEdit(this)), chkKey_(makeChoice("chkRegSuche(0)", QStringLiteral("Schlüssel"))),
      chkValueNames_(makeChoice("chkRegSuche(1)", QStringLiteral("Wertnamen"))), chkData_(makeChoice("chkRegSuche(2)", QStringLiteral("Daten"))),
      cmdRegSuchen_(new QPushButton(this)), lvRegHits_(new QTreeView(this)), hits_(new RegHitModel(this)), lblRegHits_(new QLabel(this)) {
    setObjectName(QStringLiteral("fraRegSuche"));
    setFrameShape(QFrame::StyledPanel);
    auto* box = new QVBoxLayout(this);
    box->addLayout(makeQuestion());
    lvRegHits_->setObjectName(QStringLiteral("lvRegTreffer"));
    lvRegHits_->setAccessibleName(QStringLiteral("Treffer"));
    lvRegHits_->setModel(hits_);
    lvRegHits_->setRootIsDecorated(false);
    lvRegHits_->setUniformRowHeights(true);
    lvRegHits_->setAlternatingRowColors(true);
    lvRegHits_->setTabKeyNavigation(false);
    lvRegHits_->setMinimumHeight(lvRegHits_->fontMetrics().lineSpacing() * LinesShown);
    lvRegHits_->header()->resizeSection(0, 320);
    lvRegHits_->header()->resizeSection(1, 140);
    box->addWidget(lvRegHits_, 1);
    lblRegHits_->setObjectName(QStringLiteral("lblRegTreffer"));
    lblRegHits_->setTextFormat(Qt::PlainText);
    box->addWidget(lblRegHits_);
    connect(cmdRegSuchen_, &QPushButton::clicked, this, &RegSearchArea::search);
    connect(txtRegSuche_, &QLineEdit::returnPressed, this, &RegSearchArea::search);
    connect(lvRegHits_, &QTreeView::activated, this, [this](const QModelIndex& index) {
        if (const BrowserHit* hit = hits_->at(index)) emit chosen(BrowserHit(*hit));
    });
}

QCheckBox* RegSearchArea::makeChoice(const char* name, const QString& caption) {
    auto* box = new QCheckBox(caption, this);
    box->setObjectName(QLatin1String(name));
    box->setChecked(true);
    return box;
}

QLayout* RegSearchArea::makeQuestion() {
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
    for (QCheckBox* box : {chkKey_, chkValueNames_, chkData_}) row->addWidget(box);
    row->addWidget(cmdRegSuchen_);
    return row;
}

void RegSearchArea::open(const std::string& key) {
    setKey(key);
    show();
    txtRegSuche_->setFocus();
    txtRegSuche_->selectAll();
}

void RegSearchArea::setKey(const std::string& key) {
    key_ = key;
    if (!running_ && hits_->rowCount() == 0) lblRegHits_->setText(QStringLiteral("Gesucht wird unter %1").arg(plainLine(key_)));
}

void RegSearchArea::showProgress(const std::string& key) {
    lblRegHits_->setText(lblRegHits_->fontMetrics().elidedText(
        QStringLiteral("%1 Treffer, gesucht wird in %2").arg(hits_->rowCount()).arg(plainLine(key)), Qt::ElideMiddle, lblRegHits_->width()));
    QCoreApplication::processEvents();
}

void RegSearchArea::search() {
    if (running_) return cancel();
    BrowserSearch wanted{utf8(txtRegSuche_->text()), chkKey_->isChecked(), chkValueNames_->isChecked(), chkData_->isChecked()};
    hits_->clear();
    if (wanted.text.empty() || key_.empty() || !(wanted.keys || wanted.names || wanted.data))
        return lblRegHits_->setText(QStringLiteral("Bitte geben Sie einen Text ein und wählen Sie, wo gesucht wird."));
    running_ = true;
    cancelled_ = false;
    cmdRegSuchen_->setText(QStringLiteral("&Anhalten"));
    emit started();
    std::vector<BrowserHit> fresh;
    QElapsedTimer sinceShown;
    sinceShown.start();
    browser_.search(key_, wanted, [&](BrowserHit hit) { fresh.push_back(std::move(hit)); },
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
    lblRegHits_->setText(text);
    emit finished();
    if (count == 0) return txtRegSuche_->setFocus();
    lvRegHits_->setCurrentIndex(hits_->index(0, 0));
    lvRegHits_->setFocus();
}

}  // namespace brenvik
