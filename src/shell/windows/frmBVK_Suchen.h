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

class SuchergebnisModel : public QAbstractTableModel {
public:
    using QAbstractTableModel::QAbstractTableModel;
    void show(std::vector<Suchtreffer> hits);
    const Suchtreffer* at(const QModelIndex& index) const;
    int rowCount(const QModelIndex& parent = {}) const override { return parent.isValid() ? 0 : static_cast<int>(hits_.size()); }
    int columnCount(const QModelIndex& = {}) const override { return 2; }
    QVariant data(const QModelIndex& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    std::vector<Suchtreffer> hits_;
};

class frmBVK_Suchen : public Dialog {
public:
    frmBVK_Suchen(SuchenAnfrage& request, QWidget* parent);

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
    QString resultText(Suchergebnis::Art art, std::size_t count) const;

    SuchenAnfrage& request_;
    QLineEdit* txtSuchText_;
    std::array<QCheckBox*, 3> chkTabelle_{};
    QCheckBox* chkOptionen_;
    SuchergebnisModel* model_;
    QTreeView* lvSuchergebnis_;
    QLabel* lblTreffer_;
    QPushButton *cmdSuchen_, *cmdOK_;
};

}  // namespace brenvik
