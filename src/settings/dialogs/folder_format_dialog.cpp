#include "settings/dialogs/folder_format_dialog.h"

#include "core/wildcard.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"
#include "settings/dialogs/mask_dialog.h"

#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmora {

namespace {

constexpr int usualWidth = 460;
constexpr QChar separator = u';';

} // namespace

FolderFormatDialog::FolderFormatDialog(const FileFormatGroup &group, const QStringList &taken, QWidget *parent)
    : QDialog(parent),
      m_taken(taken),
      m_on(group.on || group.name.isEmpty()),
      m_name(new QLineEdit(group.name)),
      m_masks(new QLineEdit(group.mask)),
      m_verdict(new QLabel)
{
    setWindowTitle(Velmora::tr("File format"));
    m_name->setObjectName(QStringLiteral("formatName"));
    m_masks->setObjectName(QStringLiteral("formatMasks"));
    m_masks->setPlaceholderText(QStringLiteral("*.cpp;*.h"));
    m_verdict->setObjectName(QStringLiteral("formatVerdict"));
    m_verdict->setWordWrap(true);
    m_verdict->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    // Room for the longest verdict from the start, so that nothing moves while a person types.
    m_verdict->setMinimumHeight(2 * m_verdict->fontMetrics().lineSpacing());

    auto *form = new QFormLayout;
    form->addRow(Velmora::tr("&Name:"), m_name);
    form->addRow(Velmora::tr("&Masks, separated by semicolons:"), m_masks);
    auto *column = new QVBoxLayout(this);
    column->addLayout(form);
    column->addWidget(m_verdict, 1);
    column->addLayout(makeConfirmButtons(*this));
    for (const QLineEdit *line : {m_name, m_masks})
        connect(line, &QLineEdit::textChanged, this, &FolderFormatDialog::judge);
    judge();
    m_name->selectAll();
    resize(sizeHint().expandedTo({usualWidth, 0}));
}

FileFormatGroup FolderFormatDialog::group() const
{
    return {m_name->text().trimmed(), splitMasks(m_masks->text()).join(separator), m_on};
}

QString FolderFormatDialog::problem(const FileFormatGroup &typed) const
{
    if (m_taken.contains(typed.name, Qt::CaseInsensitive))
        return Velmora::tr("There is a format \"%1\" already").arg(typed.name);
    for (const QString &mask : typed.mask.split(separator)) {
        if (const QString wrong = maskProblem(mask, MaskSyntax::Bracketed); !wrong.isEmpty())
            return wrong;
    }
    return {};
}

void FolderFormatDialog::judge()
{
    const FileFormatGroup typed = group();
    const QString wrong = problem(typed);
    m_verdict->setText(wrong.isEmpty() ? QString() : QStringLiteral("⚠ ") + wrong);
    findChild<QPushButton *>(QStringLiteral("settingsOk"))
        ->setEnabled(wrong.isEmpty() && !typed.name.isEmpty() && !typed.mask.isEmpty());
}

} // namespace velmora
