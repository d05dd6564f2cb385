#pragma once
// Finds Tips by words; the hit that the user opens goes back in the request.
#include <QAbstractTableModel>
#include <QCheckBox>
#include <QLineEdit>
#include <QTreeView>
#include <array>

#include "shell/widgets/Dialogs.h"
#include "tipdb/TipSearch.h"

namespace brenvik {

class SearchResultModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;
    void show(std::vector<SearchHit> hits);
    const SearchHit* at(const QModelIndex& index) const;
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(hits_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 2; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<SearchHit> hits_;
};

class frmBVK_Suchen : public Dialog {
public:
    frmBVK_Suchen(SuchenRequest& request, QWidget* parent);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void done(int result) override;

private:
    QWidget* makeQuestion();
    QWidget* makeChoices();
    QLayout* makeButtons();
    void Suchen();
    void TippOeffnen();
    void readFields();
    QString resultText(SearchResult::Art art, std::size_t count) const;

    SuchenRequest& request_;
    QLineEdit* txtSuchText_;
    std::array<QCheckBox*, 3> chkTabelle_{};
    QCheckBox* chkOptionen_;
    SearchResultModel* model_;
    QTreeView* lvSuchergebnis_;
    QLabel* lblTreffer_;
    QPushButton *cmdSuchen_, *cmdOK_;
};

}  // namespace brenvik
