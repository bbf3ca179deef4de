#include "settings/dialogs/grammar_boxes.h"

#include "session/translate.h"
#include "settings/options/text_session_options.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QLabel>

namespace velmora {

GrammarBoxes::GrammarBoxes(QWidget *parent)
    : QWidget(parent),
      m_leading(new QCheckBox(Velmora::tr("&Leading whitespace"))),
      m_embedded(new QCheckBox(Velmora::tr("&Embedded whitespace"))),
      m_trailing(new QCheckBox(Velmora::tr("&Trailing whitespace"))),
      m_everythingElse(new QCheckBox(Velmora::tr("E&verything else"))),
      m_characterCase(new QCheckBox(Velmora::tr("&Character case")))
{
    m_leading->setObjectName(QStringLiteral("importantLeadingWhitespace"));
    m_embedded->setObjectName(QStringLiteral("importantEmbeddedWhitespace"));
    m_trailing->setObjectName(QStringLiteral("importantTrailingWhitespace"));
    m_everythingElse->setObjectName(QStringLiteral("importantEverythingElse"));
    m_characterCase->setObjectName(QStringLiteral("importantCharacterCase"));

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(24);
    grid->setColumnStretch(1, 1);
    grid->addWidget(new QLabel(Velmora::tr("Mark grammar elements that are important to the comparison:")), 0, 0, 1, 2);
    grid->addWidget(m_leading, 1, 0);
    grid->addWidget(m_embedded, 2, 0);
    grid->addWidget(m_trailing, 3, 0);
    grid->addWidget(m_everythingElse, 1, 1);
    grid->addWidget(m_characterCase, 2, 1);
    for (const QCheckBox *box : {m_leading, m_embedded, m_trailing, m_everythingElse, m_characterCase})
        connect(box, &QCheckBox::toggled, this, &GrammarBoxes::changed);
}

void GrammarBoxes::load(const TextSessionOptions &options)
{
    m_leading->setChecked(options.importantLeadingWhitespace);
    m_embedded->setChecked(options.importantEmbeddedWhitespace);
    m_trailing->setChecked(options.importantTrailingWhitespace);
    m_everythingElse->setChecked(options.importantEverythingElse);
    m_characterCase->setChecked(options.importantCharacterCase);
}

void GrammarBoxes::store(TextSessionOptions &options) const
{
    options.importantLeadingWhitespace = m_leading->isChecked();
    options.importantEmbeddedWhitespace = m_embedded->isChecked();
    options.importantTrailingWhitespace = m_trailing->isChecked();
    options.importantEverythingElse = m_everythingElse->isChecked();
    options.importantCharacterCase = m_characterCase->isChecked();
}

} // namespace velmora
