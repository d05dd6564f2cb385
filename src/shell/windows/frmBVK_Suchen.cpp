#include "shell/windows/frmBVK_Suchen.h"

#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QVBoxLayout>

#include "frame/text/Texts.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 125, TextTables = 126, TextOptions = 127, TextFirstTable = 128, TextExact = 131, TextSearchFor = 132;
constexpr int ButtonCancel = 0, ButtonOk = 8, ButtonSearch = 25;
constexpr int LongestText = 1'000;

}  // namespace

void SearchResultModel::show(std::vector<SearchHit> hits) {
    beginResetModel();
    hits_ = std::move(hits);
    endResetModel();
}

const SearchHit* SearchResultModel::at(const QModelIndex& index) const {
    return index.isValid() && static_cast<std::size_t>(index.row()) < hits_.size() ? &hits_[static_cast<std::size_t>(index.row())] : nullptr;
}

QVariant SearchResultModel::data(const QModelIndex& index, int role) const {
    const SearchHit* hit = at(index);
    if (!hit || (role != Qt::DisplayRole && role != Qt::ToolTipRole)) return {};
    if (index.column() == 0) return role == Qt::DisplayRole ? QVariant(hit->Index) : QVariant();
    return role == Qt::DisplayRole ? plainLine(hit->Überschrift) : toolTipText(hit->Überschrift);
}

QVariant SearchResultModel::headerData(int section, Qt::Orientation orientation, int role) const {
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole) return {};
    return section == 0 ? QStringLiteral("Index") : QStringLiteral("Überschrift");
}

frmBVK_Suchen::frmBVK_Suchen(SuchenRequest& request, QWidget* parent)
    : Dialog("frmBVK_Suchen", qt(strBVKTexte(TextTitle)), parent), request_(request), txtSuchText_(new QLineEdit(this)),
      chkOptionen_(new QCheckBox(qt(strBVKTexte(TextExact)), this)), model_(new SearchResultModel(this)), lvSuchergebnis_(new QTreeView(this)) {
    auto* box = new QVBoxLayout(this);
    box->addWidget(makeQuestion());
    box->addWidget(makeChoices());
    lvSuchergebnis_->setObjectName(QStringLiteral("lvSuchergebnis"));
    lvSuchergebnis_->setAccessibleName(QStringLiteral("Gefundene Tipps"));
    lvSuchergebnis_->setModel(model_);
    lvSuchergebnis_->setRootIsDecorated(false);
    lvSuchergebnis_->setUniformRowHeights(true);
    lvSuchergebnis_->setAlternatingRowColors(true);
    lvSuchergebnis_->setTabKeyNavigation(false);
    lvSuchergebnis_->header()->resizeSection(0, lvSuchergebnis_->fontMetrics().horizontalAdvance(QStringLiteral("9999999")) + 20);
    box->addWidget(lvSuchergebnis_, 1);
    box->addLayout(makeButtons());
    resize(560, 520);
    QWidget* last = txtSuchText_;
    for (QWidget* next : std::initializer_list<QWidget*>{cmdSuchen_, chkTabelle_[0], chkTabelle_[1], chkTabelle_[2], chkOptionen_, lvSuchergebnis_, cmdOK_}) {
        setTabOrder(last, next);
        last = next;
    }

    connect(lvSuchergebnis_, &QTreeView::doubleClicked, this, [this] { TippOeffnen(); });
    connect(txtSuchText_, &QLineEdit::textChanged, this, [this] { lblTreffer_->clear(); });
    txtSuchText_->setFocus();
}

QWidget* frmBVK_Suchen::makeQuestion() {
    auto* row = new QWidget(this);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    QLabel* lblSuchText = label("lblSuchText", qt(strBVKTexte(TextSearchFor)));
    lblSuchText->setWordWrap(false);
    lblSuchText->setBuddy(txtSuchText_);
    txtSuchText_->setObjectName(QStringLiteral("txtSuchText"));
    txtSuchText_->setAccessibleName(lblSuchText->text());
    txtSuchText_->setMaxLength(LongestText);
    txtSuchText_->setText(qt(request_.searchOrder.txtSuchText));
    txtSuchText_->selectAll();
    cmdSuchen_ = button("cmdSuchen", qt(strBVKButtons(ButtonSearch)));
    cmdSuchen_->setDefault(true);
    connect(cmdSuchen_, &QPushButton::clicked, this, [this] { Suchen(); });
    line->addWidget(lblSuchText);
    line->addWidget(txtSuchText_, 1);
    line->addWidget(cmdSuchen_);
    return row;
}

QWidget* frmBVK_Suchen::makeChoices() {
    auto* row = new QWidget(this);
    auto* line = new QHBoxLayout(row);
    line->setContentsMargins(0, 0, 0, 0);
    const auto group = [&](const char* name, int text) {
        auto* frame = new QGroupBox(qt(strBVKTexte(text)), row);
        frame->setObjectName(QLatin1String(name));
        line->addWidget(frame);
        return new QVBoxLayout(frame);
    };
    QVBoxLayout* tables = group("fraTabellen", TextTables);
    for (std::size_t i = 0; i < chkTabelle_.size(); ++i) {
        chkTabelle_[i] = new QCheckBox(qt(strBVKTexte(TextFirstTable + static_cast<int>(i))), row);
        chkTabelle_[i]->setObjectName(elementName("chkTabelle", i));
        chkTabelle_[i]->setChecked(request_.searchOrder.chkTabelle[i]);
        tables->addWidget(chkTabelle_[i]);
    }
    QVBoxLayout* options = group("fraOptionen", TextOptions);
    chkOptionen_->setObjectName(QStringLiteral("chkOptionen(0)"));
    chkOptionen_->setChecked(request_.searchOrder.exactWording);
    options->addWidget(chkOptionen_);
    options->addStretch(1);
    return row;
}

QLayout* frmBVK_Suchen::makeButtons() {
    auto* row = new QHBoxLayout;
    lblTreffer_ = label("lblTreffer", {});
    cmdOK_ = button("cmdOK", qt(strBVKButtons(ButtonOk)));
    cmdOK_->setEnabled(false);
    QPushButton* cmdAbbruch = button("cmdAbbruch", qt(strBVKButtons(ButtonCancel)));
    row->addWidget(lblTreffer_, 1);
    row->addWidget(cmdOK_);
    row->addWidget(cmdAbbruch);
    connect(cmdOK_, &QPushButton::clicked, this, [this] { TippOeffnen(); });
    connect(cmdAbbruch, &QPushButton::clicked, this, &QDialog::reject);
    return row;
}

void frmBVK_Suchen::readFields() {
    SearchOrder& order = request_.searchOrder;
    order.txtSuchText = utf8(txtSuchText_->text());
    for (std::size_t i = 0; i < chkTabelle_.size(); ++i) order.chkTabelle[i] = chkTabelle_[i]->isChecked();
    order.exactWording = chkOptionen_->isChecked();
}

void frmBVK_Suchen::Suchen() {
    readFields();
    model_->show({});
    SearchResult result = request_.suchen(request_.searchOrder);
    const std::size_t count = result.hits.size();
    model_->show(std::move(result.hits));
    cmdOK_->setEnabled(count > 0);
    lblTreffer_->setText(resultText(result.art, count));
    if (count == 0) return txtSuchText_->setFocus();
    lvSuchergebnis_->setCurrentIndex(model_->index(0, 0));
    lvSuchergebnis_->setFocus();
}

QString frmBVK_Suchen::resultText(SearchResult::Art art, std::size_t count) const {
    if (art == SearchResult::Art::NothingToSeek) return QStringLiteral("Bitte geben Sie einen Text ein und wählen Sie, wo gesucht wird.");
    if (art == SearchResult::Art::Sought) return count == 1 ? QStringLiteral("1 Tipp gefunden") : QStringLiteral("%1 Tipps gefunden").arg(count);
    const bool apostrophe = request_.searchOrder.txtSuchText.find('\'') != std::string::npos;
    return apostrophe ? QStringLiteral("Die Suche ist gescheitert. Einen Apostroph geben Sie bitte doppelt ein: ''") : QStringLiteral("Die Suche ist gescheitert.");
}

// However the window is closed, what was entered stands there again the next time.
void frmBVK_Suchen::done(int result) {
    readFields();
    Dialog::done(result);
}

// Enter searches, but in the list it opens the hit.
void frmBVK_Suchen::keyPressEvent(QKeyEvent* event) {
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (enter && focusWidget() == lvSuchergebnis_) return TippOeffnen();
    Dialog::keyPressEvent(event);
}

void frmBVK_Suchen::TippOeffnen() {
    const SearchHit* hit = model_->at(lvSuchergebnis_->currentIndex());
    if (!hit) return;
    request_.chosen = hit->Überschrift;
    accept();
}

}  // namespace brenvik
