#include "settings/dialogs/folder_misc_page.h"

#include "core/settings_store.h"
#include "session/translate.h"
#include "settings/options/folder_session_options.h"

#include <QCheckBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QSpinBox>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr qint64 megabyte = 1024 * 1024;

} // namespace

FolderMiscPage::FolderMiscPage(QWidget *parent)
    : FolderSettingsPage(parent),
      m_logPanel(new QCheckBox(Velmora::tr("Show action log panel (&L)"))),
      m_filterBar(new QCheckBox(Velmora::tr("Show filter bar (&F)"))),
      m_kept(loadKeptCopies(SessionSettings())),
      m_keptSize(new QSpinBox),
      m_keptDays(new QSpinBox)
{
    m_logPanel->setObjectName(QStringLiteral("showLogPanel"));
    m_filterBar->setObjectName(QStringLiteral("showFilterBar"));
    auto *column = new QVBoxLayout(this);
    column->addWidget(m_logPanel);
    column->addWidget(m_filterBar);
    column->addSpacing(10);
    column->addWidget(makeKeptCopies());
    column->addStretch(1);
    connect(m_logPanel, &QCheckBox::toggled, this, &SettingsPageBase::changed);
    connect(m_filterBar, &QCheckBox::toggled, this, &SettingsPageBase::changed);
}

void FolderMiscPage::load(const FolderSessionOptions &options)
{
    m_logPanel->setChecked(options.showLogPanel);
    m_filterBar->setChecked(options.showFilterBar);
}

void FolderMiscPage::store(FolderSessionOptions &options) const
{
    options.showLogPanel = m_logPanel->isChecked();
    options.showFilterBar = m_filterBar->isChecked();
}

void FolderMiscPage::storeKeptCopies() const
{
    const KeptCopies chosen = chosenLimits();
    if (chosen == m_kept)
        return; // another session may have changed them since
    SessionSettings settings;
    saveKeptCopies(settings, chosen);
}

KeptCopies FolderMiscPage::chosenLimits() const
{
    // Limits that the boxes cannot show stay as long as nobody changes what they show.
    KeptCopies chosen = m_kept;
    if (m_keptSize->value() != qMin<qint64>(m_kept.bytes / megabyte, m_keptSize->maximum()))
        chosen.bytes = m_keptSize->value() * megabyte;
    if (m_keptDays->value() != qMin(m_kept.days, m_keptDays->maximum()))
        chosen.days = m_keptDays->value();
    return chosen;
}

QWidget *FolderMiscPage::makeKeptCopies()
{
    m_keptSize->setObjectName(QStringLiteral("keptCopiesSize"));
    m_keptSize->setRange(0, 1024 * 1024);
    m_keptSize->setSingleStep(256);
    m_keptSize->setGroupSeparatorShown(true);
    m_keptSize->setSuffix(Velmora::tr(" MB"));
    m_keptSize->setSpecialValueText(Velmora::tr("Nothing"));
    m_keptSize->setValue(int(qMin<qint64>(m_kept.bytes / megabyte, m_keptSize->maximum())));
    m_keptDays->setObjectName(QStringLiteral("keptCopiesDays"));
    m_keptDays->setRange(1, 3650);
    m_keptDays->setSuffix(Velmora::tr(" days"));
    m_keptDays->setValue(m_kept.days);
    connect(m_keptSize, &QSpinBox::valueChanged, m_keptDays, [this](int size) { m_keptDays->setEnabled(size > 0); });
    m_keptDays->setEnabled(m_keptSize->value() > 0);

    auto *explanation =
        new QLabel(Velmora::tr("Files that a command replaces or deletes are kept, so that the command can be undone; "
                               "the oldest go first. This holds for all folder comparisons."));
    explanation->setWordWrap(true);
    auto *group = new QGroupBox(Velmora::tr("Kept copies"));
    auto *form = new QFormLayout(group);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow(explanation);
    form->addRow(Velmora::tr("Keep at most (&K):"), m_keptSize);
    form->addRow(Velmora::tr("For at most (&A):"), m_keptDays);
    return group;
}

} // namespace velmora
