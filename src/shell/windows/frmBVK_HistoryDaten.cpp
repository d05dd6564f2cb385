#include "shell/windows/frmBVK_HistoryDaten.h"

#include <QHBoxLayout>
#include <QHeaderView>
#include <QTreeWidget>

#include "frame/text/Texts.h"
#include "lists/Messages.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextTitle = 45, TextInfo = 47, ButtonReset = 17, ButtonBack = 16;
constexpr int ColumnName = 180, ColumnValue = 190;

}  // namespace

frmBVK_HistoryDaten::frmBVK_HistoryDaten(HistoryDatenRequest& request, QWidget* parent)
    : Dialog("frmBVK_HistoryDaten", qt(strBVKTexte(TextTitle)), parent), request_(request) {
    auto* grid = new QGridLayout(this);
    QLabel* info = label("lblHisDaten", qt(strBVKTexte(TextInfo)));
    grid->addWidget(info, 0, 0);
    auto* lvHisDaten = new QTreeWidget(this);
    lvHisDaten->setObjectName(QStringLiteral("lvHisDaten"));
    lvHisDaten->setAccessibleName(info->text());
    lvHisDaten->setHeaderLabels({QStringLiteral("Wertname"), QStringLiteral("Alter Wert"), QStringLiteral("Aktueller Wert")});
    lvHisDaten->setRootIsDecorated(false);
    lvHisDaten->setUniformRowHeights(true);
    lvHisDaten->setAllColumnsShowFocus(true);
    lvHisDaten->setAlternatingRowColors(true);
    info->setBuddy(lvHisDaten);
    for (const HistoryDatenRequest::Zeile& row : request.lines) {
        auto* item = new QTreeWidgetItem(lvHisDaten);
        const std::string* texts[] = {&row.wertname, &row.formerValue, &row.presentValue};
        for (int k = 0; k < 3; ++k) {
            item->setText(k, plainLine(*texts[k]));
            item->setToolTip(k, toolTipText(*texts[k]));
        }
    }
    if (lvHisDaten->topLevelItemCount() > 0) lvHisDaten->setCurrentItem(lvHisDaten->topLevelItem(0));
    lvHisDaten->setColumnWidth(0, ColumnName);
    lvHisDaten->setColumnWidth(1, ColumnValue);
    grid->addWidget(lvHisDaten, 1, 0);
    QLabel* path = label("lblPfad", {});
    path->setTextFormat(Qt::PlainText);
    path->setTextInteractionFlags(Qt::TextSelectableByMouse);
    path->setWordWrap(true);
    const auto showPath = [this, path, lvHisDaten] {
        const int row = lvHisDaten->indexOfTopLevelItem(lvHisDaten->currentItem());
        path->setText(row < 0 ? QString() : plainLine(request_.lines[static_cast<std::size_t>(row)].pfad));
    };
    connect(lvHisDaten, &QTreeWidget::currentItemChanged, this, showPath);
    showPath();
    grid->addWidget(path, 2, 0);
    if (!request.hint.empty()) grid->addWidget(label("lblHinweis", plainLines(request.hint, MostInBox)), 3, 0);
    makeButtons(*grid);
    resize(620, 320);
    lvHisDaten->setFocus();
}

void frmBVK_HistoryDaten::makeButtons(QGridLayout& grid) {
    QPushButton* cmdDatenUndo = button("cmdDatenUndo", qt(strBVKButtons(ButtonReset)));
    QPushButton* cmdDatenGenau = button("cmdDatenGenau", qt(messages::ExactButton));
    QPushButton* cmdDatenZurueck = button("cmdDatenZurück", qt(strBVKButtons(ButtonBack)));
    cmdDatenUndo->setEnabled(request_.undoPossible);
    cmdDatenUndo->setToolTip(QStringLiteral("Schreibt die Texte der Spalte \"Alter Wert\" zurück"));
    cmdDatenGenau->setEnabled(request_.exactPossible);
    cmdDatenGenau->setToolTip(QStringLiteral("Stellt Typ und Inhalt jedes Wertes genau so wieder her, alles oder nichts"));
    auto* row = new QHBoxLayout;
    row->addWidget(cmdDatenUndo);
    row->addWidget(cmdDatenGenau);
    row->addStretch(1);
    row->addWidget(cmdDatenZurueck);
    grid.addLayout(row, 4, 0);
    cmdDatenZurueck->setDefault(true);    // the others write
    connect(cmdDatenUndo, &QPushButton::clicked, this, [this] {
        if (request_.undo()) accept();
    });
    connect(cmdDatenGenau, &QPushButton::clicked, this, [this] {
        if (request_.undoExactly()) accept();
    });
    connect(cmdDatenZurueck, &QPushButton::clicked, this, [this] {
        request_.back();
        reject();
    });
}

}  // namespace brenvik
