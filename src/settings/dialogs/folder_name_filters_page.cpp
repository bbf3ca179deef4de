#include "settings/dialogs/folder_name_filters_page.h"

#include "core/wildcard.h"
#include "session/translate.h"
#include "settings/dialogs/mask_dialog.h"
#include "settings/options/folder_session_options.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace velmora {

namespace {

constexpr QChar separator = u';';

} // namespace

FolderNameFiltersPage::FolderNameFiltersPage(QWidget *parent) : FolderSettingsPage(parent)
{
    using Options = FolderSessionOptions;
    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    const QString all = Velmora::tr("all");
    const QString none = Velmora::tr("none");
    m_fields[0] = addField(*grid, Velmora::tr("Include files (&I):"), all, QStringLiteral("includeFiles"),
                           &Options::includeFiles);
    m_fields[1] = addField(*grid, Velmora::tr("Exclude files (&L):"), none, QStringLiteral("excludeFiles"),
                           &Options::excludeFiles);
    m_fields[2] = addField(*grid, Velmora::tr("Include folders (&O):"), all, QStringLiteral("includeFolders"),
                           &Options::includeFolders);
    m_fields[3] = addField(*grid, Velmora::tr("Exclude folders (&E):"), none, QStringLiteral("excludeFolders"),
                           &Options::excludeFolders);

    auto *clear = new QPushButton(Velmora::tr("Clear (&C)"));
    clear->setObjectName(QStringLiteral("clearFilters"));
    clear->setToolTip(Velmora::tr("Clear all filter lists (no restrictions)"));
    clear->setAutoDefault(false);
    connect(clear, &QPushButton::clicked, this, [this] {
        for (const Field &field : m_fields)
            field.line->clear();
    });

    auto *column = new QVBoxLayout(this);
    column->addWidget(new QLabel(Velmora::tr("Wildcard masks (semicolon-separated):")));
    column->addLayout(grid);
    column->addWidget(clear, 0, Qt::AlignTrailing);
    column->addStretch(1);
}

void FolderNameFiltersPage::load(const FolderSessionOptions &options)
{
    for (const Field &field : m_fields)
        field.line->setText((options.*field.masks).join(separator));
    judge();
}

void FolderNameFiltersPage::store(FolderSessionOptions &options) const
{
    for (const Field &field : m_fields) {
        // A list that nobody has touched stays as it is, with whatever a file has put into it.
        QStringList &masks = options.*field.masks;
        if (field.line->text() != masks.join(separator))
            masks = splitMasks(field.line->text());
    }
}

FolderNameFiltersPage::Field FolderNameFiltersPage::addField(QGridLayout &grid, const QString &text,
                                                             const QString &placeholder, const QString &name,
                                                             QStringList FolderSessionOptions::*masks)
{
    Field field{masks, new QLineEdit, new QLabel};
    field.line->setObjectName(name);
    field.line->setPlaceholderText(placeholder);
    field.line->setClearButtonEnabled(true);
    field.verdict->setObjectName(name + QLatin1String("Verdict"));
    // The room is there before it is needed, so that nothing moves while a person types.
    field.verdict->setMinimumHeight(field.verdict->fontMetrics().lineSpacing() + 6);
    field.verdict->setAlignment(Qt::AlignTop | Qt::AlignLeading);
    auto *label = new QLabel(text);
    label->setBuddy(field.line);
    const int row = grid.rowCount();
    grid.addWidget(label, row, 0);
    grid.addWidget(field.line, row, 1);
    grid.addWidget(field.verdict, row + 1, 1);
    connect(field.line, &QLineEdit::textChanged, this, [this] {
        judge();
        Q_EMIT changed();
    });
    return field;
}

void FolderNameFiltersPage::judge()
{
    for (const Field &field : m_fields) {
        if (!field.verdict)
            continue;
        QString problem;
        for (const QString &mask : splitMasks(field.line->text())) {
            problem = maskProblem(mask, MaskSyntax::Bracketed);
            if (!problem.isEmpty())
                break;
        }
        field.verdict->setText(problem.isEmpty() ? QString() : QStringLiteral("⚠ ") + problem);
    }
}

} // namespace velmora
