#include "shell/tipwindows/frmBVK_Parameter.h"

#include <QHBoxLayout>
#include <QVBoxLayout>
#include <iterator>

#include "frame/program/Product.h"
#include "frame/text/Texts.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int Width = 560;

struct Parameter {
    const char* name;          // of the label; its explanation has "TXT" behind
    const char* text;
    const char* explanation;
};
constexpr Parameter Parameters[] = {
    {"lblParam1", "/PC:<Rechnername>",
     "Hier geben Sie den Rechnernamen des PC an auf dem zugegriffen werden soll. Ohne Angabe wird immer auf den lokalen Rechner "
     "zugegriffen.\nBeispiel: /PC:Test01"},
    {"lblParam2", "/U:<Account",
     "Hier können Sie einen anderen Accountnamen angeben, fals Sie nicht mit dem aktuellen Account auf den Rechner zugreifen können."},
    {"lblParam3", "/PW:<Passwort>",
     "Hier geben Sie das Passwort für den Account an.Diese beiden Parameter müssen immer zusammen eingegeben werden...\n"
     "Beispiel: /U:Dom1\\Admin /PW:Test"},
};

}  // namespace

frmBVK_Parameter::frmBVK_Parameter(ParameterRequest&, QWidget* parent) : Dialog("frmBVK_Parameter", qt(product::Titel), parent) {
    QLabel* usage = label("lblBVKStart", QStringLiteral("BVK.EXE [/PC:<Rechnername>] [/U:<Account> /PW:<Passwort>]"));
    QFont bold = usage->font();
    bold.setBold(true);
    usage->setFont(bold);
    usage->setTextInteractionFlags(Qt::TextSelectableByMouse | Qt::TextSelectableByKeyboard);
    auto* grid = new QGridLayout;
    grid->setHorizontalSpacing(16);
    grid->setVerticalSpacing(10);
    grid->setColumnStretch(1, 1);
    int row = 0;
    for (const Parameter& each : Parameters) {
        QLabel* name = label(each.name, QString::fromUtf8(each.text));
        name->setWordWrap(false);
        grid->addWidget(name, row, 0, Qt::AlignTop);
        grid->addWidget(label((std::string(each.name) + "TXT").c_str(), QString::fromUtf8(each.explanation)), row++, 1);
    }
    QPushButton* ok = button("cmdOK", QStringLiteral("OK"));
    ok->setDefault(true);
    connect(ok, &QPushButton::clicked, this, &QDialog::accept);
    auto* box = new QVBoxLayout(this);
    box->setSpacing(12);
    box->addWidget(label("lblInfo", QString::fromUtf8("Sie können den Brenvik mit folgenden Parametern aufrufen:")));
    box->addWidget(usage);
    box->addLayout(grid);
    box->addWidget(ok, 0, Qt::AlignRight);
    fixSize(Width);
    ok->setFocus();
}

}  // namespace brenvik
