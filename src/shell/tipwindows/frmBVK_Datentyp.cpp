#include "shell/tipwindows/frmBVK_Datentyp.h"

#include <QHBoxLayout>
#include <QPlainTextEdit>
#include <QUrl>

#include "frame/program/HelpTopics.h"
#include "frame/program/Product.h"
#include "frame/text/Texts.h"
#include "shell/widgets/PlainText.h"
#include "shell/widgets/QtText.h"

namespace brenvik {
namespace {

constexpr int TextWarning = 11, TextNumber = 12, TextTypeDatabase = 13, TextTypeRegistry = 14, TextContent = 15, TextQuestion = 16,
              TextTitle = 17;
constexpr int ButtonCancel = 0, ButtonHelp = 1, ButtonContinue = 2, ButtonMail = 3;
constexpr std::size_t LongestContent = 4'000;    // characters; more of the value helps nobody to decide

}  // namespace

frmBVK_Datentyp::frmBVK_Datentyp(UserPort& port, DatentypRequest& request, QWidget* parent)
    : Dialog("frmBVK_Datentyp", qt(strBVKTexte(TextTitle)), parent), port_(port), request_(request) {
    auto* grid = new QGridLayout(this);
    QLabel* warning = label("lblInfo", qt(strBVKTexte(TextWarning)));
    QFont bold = warning->font();
    bold.setBold(true);
    warning->setFont(bold);
    grid->addWidget(warning, 0, 0, 1, 2);
    const auto row = [&](int line, int text, const char* name, const std::string& value) {
        QLabel* caption = label("", qt(strBVKTexte(text)));
        caption->setWordWrap(false);
        grid->addWidget(caption, line, 0);
        QLabel* shown = label(name, plainLine(value));
        shown->setTextInteractionFlags(Qt::TextSelectableByMouse);
        grid->addWidget(shown, line, 1);
    };
    row(1, TextNumber, "lblTippNummer", request.tipNumber);
    row(2, TextTypeDatabase, "lblTypDatenbank", request.typeDatabase);
    row(3, TextTypeRegistry, "lblTypRegistry", request.typeRegistry);
    grid->addWidget(label("", qt(strBVKTexte(TextContent))), 4, 0, Qt::AlignTop);
    auto* content = new QPlainTextEdit(this);
    content->setObjectName(QStringLiteral("lblInhalt"));
    content->setAccessibleName(qt(strBVKTexte(TextContent)));
    content->setReadOnly(true);
    content->setTabChangesFocus(true);
    content->setPlainText(plainLines(request.contents, LongestContent));
    content->setMaximumHeight(90);
    grid->addWidget(content, 4, 1);
    grid->addWidget(label("lblFrage", qt(strBVKTexte(TextQuestion))), 5, 0, 1, 2);
    grid->setColumnStretch(1, 1);

    auto* row6 = new QHBoxLayout;
    QPushButton* cmdWeiter = button("cmdWeiter", qt(strBVKButtons(ButtonContinue)));
    QPushButton* cmdAbruch = button("cmdAbruch", qt(strBVKButtons(ButtonCancel)));
    QPushButton* cmdHelp = button("cmdHelp", qt(strBVKButtons(ButtonHelp)));
    QPushButton* cmdEMail = button("cmdEMail", qt(strBVKButtons(ButtonMail)));
    row6->addWidget(cmdEMail);
    row6->addWidget(cmdHelp);
    row6->addStretch(1);
    row6->addWidget(cmdWeiter);
    row6->addWidget(cmdAbruch);
    grid->addLayout(row6, 6, 0, 1, 2);
    cmdAbruch->setDefault(true);      // the other way deletes a value
    cmdAbruch->setFocus();
    resize(560, sizeHint().height());

    connect(cmdWeiter, &QPushButton::clicked, this, [this] {
        request_.weiter = true;
        accept();
    });
    connect(cmdAbruch, &QPushButton::clicked, this, &QDialog::reject);
    connect(cmdHelp, &QPushButton::clicked, this, [this] { port_.showHelp(std::string(product::HelpFile), helpTopic::DataTypes); });
    connect(cmdEMail, &QPushButton::clicked, this, [this] { sendMail(); });
}

void frmBVK_Datentyp::sendMail() {
    const auto line = [](int text, const std::string& value) { return qt(strBVKTexte(text)) + QLatin1Char(' ') + qt(value) + QStringLiteral("\r\n"); };
    const QString body = line(TextNumber, request_.tipNumber) + line(TextTypeDatabase, request_.typeDatabase) +
                         line(TextTypeRegistry, request_.typeRegistry) + line(TextContent, request_.contents.substr(0, LongestContent));
    const auto encoded = [](const QString& text) { return utf8(QString::fromLatin1(QUrl::toPercentEncoding(text))); };
    port_.openAddress("mailto:" + std::string(product::Mail) + "?subject=" + encoded(qt(strBVKTexte(TextTitle))) + "&Body=" + encoded(body));
}

}  // namespace brenvik
