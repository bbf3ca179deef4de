#include "app/options/text_appearance_fields.h"

#include "session/pane/text_font.h"
#include "session/translate.h"

#include <QFontComboBox>
#include <QFontInfo>
#include <QFormLayout>
#include <QSpinBox>

namespace velmora {

TextAppearanceFields::TextAppearanceFields(QFormLayout &form, QObject *parent)
    : QObject(parent),
      m_stored(TextAppearance::load()),
      m_shownFamily(QFontInfo(textFont(m_stored.family, m_stored.points)).family()),
      m_family(new QFontComboBox),
      m_points(new QSpinBox),
      m_tabWidth(new QSpinBox)
{
    m_family->setObjectName(QStringLiteral("optionTextFont"));
    m_family->setFontFilters(QFontComboBox::MonospacedFonts);
    m_family->setEditable(false);
    m_family->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_family->setMinimumContentsLength(16);
    m_family->setCurrentFont(QFont(m_shownFamily));
    m_points->setObjectName(QStringLiteral("optionTextSize"));
    m_points->setRange(int(TextAppearance::leastPoints), int(TextAppearance::mostPoints));
    m_points->setSuffix(Velmora::tr(" pt"));
    m_points->setValue(qRound(m_stored.points));
    m_tabWidth->setObjectName(QStringLiteral("optionTabWidth"));
    m_tabWidth->setRange(1, TextAppearance::mostTabWidth);
    m_tabWidth->setValue(m_stored.tabWidth);
    form.addRow(Velmora::tr("Font of texts:"), m_family);
    form.addRow(Velmora::tr("Size of texts:"), m_points);
    form.addRow(Velmora::tr("Tab width:"), m_tabWidth);
}

void TextAppearanceFields::save()
{
    TextAppearance chosen = m_stored;
    const QString family = m_family->currentFont().family();
    if (family != m_shownFamily)
        chosen.family = family;
    if (m_points->value() != qRound(m_stored.points))
        chosen.points = m_points->value();
    chosen.tabWidth = m_tabWidth->value();
    if (chosen == m_stored)
        return;
    chosen.save();
    m_stored = chosen;
}

} // namespace velmora
