#include "settings/dialogs/unimportant_text_dialog.h"

#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr int usualWidth = 440;

} // namespace

UnimportantTextDialog::UnimportantTextDialog(const QString &text, QWidget *parent)
    : QDialog(parent), m_text(new QLineEdit(text)), m_verdict(new QLabel)
{
    setWindowTitle(Velmora::tr("Unimportant text"));
    m_text->setObjectName(QStringLiteral("unimportantRule"));
    m_verdict->setObjectName(QStringLiteral("unimportantVerdict"));
    m_verdict->setWordWrap(true);
    m_verdict->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    // Room for the longest verdict from the start, so that nothing moves while a person types.
    m_verdict->setMinimumHeight(2 * m_verdict->fontMetrics().lineSpacing());

    auto *label = new QLabel(Velmora::tr("&Text or regular expression:"));
    label->setBuddy(m_text);
    auto *column = new QVBoxLayout(this);
    column->addWidget(label);
    column->addWidget(m_text);
    column->addWidget(m_verdict, 1);
    column->addLayout(makeConfirmButtons(*this));
    connect(m_text, &QLineEdit::textChanged, this, &UnimportantTextDialog::judge);
    judge();
    m_text->selectAll();
    resize(usualWidth, sizeHint().height());
}

QString UnimportantTextDialog::text() const
{
    return m_text->text();
}

void UnimportantTextDialog::judge()
{
    // Blanks around a rule do not count when lines are compared.
    const QString rule = m_text->text().trimmed();
    findChild<QPushButton *>(QStringLiteral("settingsOk"))->setEnabled(!rule.isEmpty());
    const QRegularExpression expression(rule);
    m_verdict->setText(expression.isValid()
                           ? QString()
                           : Velmora::tr("⚠ Not a regular expression, so it only counts as plain text: %1")
                                 .arg(expression.errorString()));
}

} // namespace velmora
