#include "settings/dialogs/format_page.h"

#include "session/translate.h"
#include "settings/dialogs/format_choices.h"
#include "settings/options/text_session_options.h"
#include "text/syntax/syntax_library.h"

#include <QCheckBox>
#include <QFileInfo>
#include <QGridLayout>

namespace velmora {

namespace {

/// By the name alone: a dialog does not wait for a disk.
QString detectedType(const QString &path)
{
    const auto definition = SyntaxLibrary::bundled().detect(QFileInfo(path).fileName());
    return definition ? definition->name : QString();
}

} // namespace

FormatPage::FormatPage(QWidget *parent)
    : SettingsPage(parent),
      m_left(new FormatChoices(Velmora::tr("&Left"), QStringLiteral("left"))),
      m_right(new FormatChoices(Velmora::tr("&Right"), QStringLiteral("right"))),
      m_sameAsLeft(new QCheckBox(Velmora::tr("&Same format as the left side")))
{
    m_sameAsLeft->setObjectName(QStringLiteral("sameAsLeftFileFormat"));
    m_sameAsLeft->setToolTip(Velmora::tr("The right file is read with the choices of the left one"));
    connect(m_sameAsLeft, &QCheckBox::toggled, m_right, &QWidget::setDisabled);

    auto *grid = new QGridLayout(this);
    grid->setHorizontalSpacing(12);
    grid->addWidget(m_left, 0, 0);
    grid->addWidget(m_right, 0, 1);
    grid->addWidget(m_sameAsLeft, 1, 1);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 1);
    grid->setRowStretch(2, 1);
}

void FormatPage::setOwnLineEnds(const QString &left, const QString &right)
{
    m_left->setOwnLineEnds(left);
    m_right->setOwnLineEnds(right);
}

void FormatPage::load(const TextSessionOptions &options)
{
    m_left->setFormat({options.leftFileType, options.leftEncoding, options.leftEol}, detectedType(options.leftPath));
    m_right->setFormat({options.rightFileType, options.rightEncoding, options.rightEol},
                       detectedType(options.rightPath));
    m_sameAsLeft->setChecked(options.sameAsLeftFileFormat);
}

void FormatPage::store(TextSessionOptions &options) const
{
    const FormatChoices::Format left = m_left->format();
    options.leftFileType = left.fileType;
    options.leftEncoding = left.encoding;
    options.leftEol = left.eol;
    const FormatChoices::Format right = m_right->format();
    options.rightFileType = right.fileType;
    options.rightEncoding = right.encoding;
    options.rightEol = right.eol;
    options.sameAsLeftFileFormat = m_sameAsLeft->isChecked();
}

} // namespace velmora
