#include "settings/dialogs/mask_dialog.h"

#include "core/wildcard.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include <algorithm>

namespace velmora {

namespace {

constexpr int usualWidth = 440;

} // namespace

QString maskProblem(const QString &mask, MaskSyntax syntax)
{
    if (mask.contains(u'/') || mask.contains(u'\\'))
        return Velmora::tr("\"%1\" contains a separator of folders: masks are compared with bare names").arg(mask);
    if (syntax == MaskSyntax::Plain)
        return {};
    return Wildcard::fromMask(mask).isValid()
               ? QString()
               : Velmora::tr("\"%1\" opens a list \"[\" and does not close it").arg(mask);
}

MaskDialog::MaskDialog(const QString &title, MaskSyntax syntax, const QList<Field> &fields, QWidget *parent)
    : QDialog(parent), m_syntax(syntax), m_verdict(new QLabel)
{
    setWindowTitle(title);
    m_verdict->setObjectName(QStringLiteral("maskVerdict"));
    m_verdict->setWordWrap(true);
    m_verdict->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    // Room for the longest verdict from the start, so that nothing moves while a person types.
    m_verdict->setMinimumHeight(2 * m_verdict->fontMetrics().lineSpacing());

    auto *form = new QFormLayout;
    for (const Field &field : fields) {
        auto *line = new QLineEdit(field.value);
        line->setObjectName(field.name);
        form->addRow(field.label, line);
        connect(line, &QLineEdit::textChanged, this, &MaskDialog::judge);
        m_lines.append(line);
    }
    auto *column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_verdict, 1);
    column->addLayout(makeConfirmButtons(*this));
    judge();
    m_lines.first()->selectAll();
    resize(usualWidth, sizeHint().height());
}

QStringList MaskDialog::masks() const
{
    QStringList masks;
    for (const QLineEdit *line : m_lines)
        masks.append(line->text().trimmed());
    return masks;
}

void MaskDialog::judge()
{
    QString problem;
    const QStringList typed = masks();
    for (const QString &mask : typed) {
        problem = maskProblem(mask, m_syntax);
        if (!problem.isEmpty())
            break;
    }
    m_verdict->setText(problem.isEmpty() ? QString() : QStringLiteral("⚠ ") + problem);
    const bool complete = std::none_of(typed.begin(), typed.end(), [](const QString &mask) { return mask.isEmpty(); });
    findChild<QPushButton *>(QStringLiteral("settingsOk"))->setEnabled(complete && problem.isEmpty());
}

} // namespace velmora
