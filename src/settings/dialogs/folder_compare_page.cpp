#include "settings/dialogs/folder_compare_page.h"

#include "session/translate.h"
#include "settings/options/folder_session_options.h"

#include <QComboBox>
#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>

namespace velmora {

namespace {

constexpr int largestTolerance = 3600;

QString explanationOf(CompareMethod method)
{
    switch (method) {
    case CompareMethod::Rules:
        return Velmora::tr("Files of equal size and modification time are the same without being read. Of other files "
                           "of equal size the content decides.");
    case CompareMethod::Crc:
        return Velmora::tr("Both files are read whole, and their CRC-32 checksums decide. Times do not count.");
    case CompareMethod::Binary:
        return Velmora::tr("Files of equal size are read and compared block by block. Times do not count.");
    }
    return {};
}

} // namespace

FolderComparePage::FolderComparePage(QWidget *parent)
    : FolderSettingsPage(parent), m_basis(new QComboBox), m_tolerance(new QSpinBox), m_explanation(new QLabel)
{
    m_basis->setObjectName(QStringLiteral("compareBasis"));
    m_basis->addItems(
        {Velmora::tr("Modified date and size (D)"), Velmora::tr("CRC compare (C)"), Velmora::tr("Binary compare (N)")});
    m_tolerance->setObjectName(QStringLiteral("timeTolerance"));
    m_tolerance->setRange(0, largestTolerance);
    m_tolerance->setSuffix(Velmora::tr(" sec"));
    m_tolerance->setToolTip(Velmora::tr("Treat modification times within this range as equal"));
    m_explanation->setWordWrap(true);

    auto *form = new QFormLayout(this);
    form->setVerticalSpacing(10);
    form->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    form->addRow(Velmora::tr("Compare basis (&B):"), m_basis);
    form->addRow(Velmora::tr("Time tolerance (&T):"), m_tolerance);
    form->addRow(m_explanation);
    connect(m_basis, &QComboBox::currentIndexChanged, this, [this] {
        explain();
        Q_EMIT changed();
    });
    connect(m_tolerance, &QSpinBox::valueChanged, this, &SettingsPageBase::changed);
    explain();
}

void FolderComparePage::load(const FolderSessionOptions &options)
{
    m_basis->setCurrentIndex(int(compareMethod(options.compareBasis)));
    m_tolerance->setValue(options.timeToleranceSec);
}

void FolderComparePage::store(FolderSessionOptions &options) const
{
    const auto chosen = CompareMethod(m_basis->currentIndex());
    if (chosen != compareMethod(options.compareBasis))
        options.compareBasis = qint32(chosen);
    // A tolerance out of range, from a file, stays while the box shows what it made of it.
    const bool shownAsStored = m_tolerance->value() == qBound(0, options.timeToleranceSec, largestTolerance);
    if (!shownAsStored)
        options.timeToleranceSec = m_tolerance->value();
}

void FolderComparePage::explain()
{
    m_explanation->setText(explanationOf(CompareMethod(m_basis->currentIndex())));
}

} // namespace velmora
