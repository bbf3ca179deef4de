#include "settings/dialogs/alignment_page.h"

#include "session/translate.h"
#include "settings/options/text_session_options.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QLabel>
#include <QRadioButton>
#include <QSpinBox>
#include <QVBoxLayout>

namespace velmora {

AlignmentPage::AlignmentPage(QWidget *parent)
    : SettingsPage(parent),
      m_methods(new QButtonGroup(this)),
      m_neverAlign(new QCheckBox(Velmora::tr("&Never align differences"))),
      m_tolerance(new QSpinBox),
      m_nearby(new QCheckBox(Velmora::tr("Use &closeness matching")))
{
    m_neverAlign->setObjectName(QStringLiteral("neverAlignDifferences"));
    m_nearby->setObjectName(QStringLiteral("useNearbyMatches"));
    m_nearby->setToolTip(Velmora::tr("Prefer closer pairings within diff blocks"));

    auto *column = new QVBoxLayout(this);
    const auto addMethod = [&](AlignAlgorithm method, const QString &text, const QString &name) {
        auto *button = new QRadioButton(text);
        button->setObjectName(name);
        m_methods->addButton(button, int(method));
        column->addWidget(button);
    };
    addMethod(AlignAlgorithm::Unaligned, Velmora::tr("&Unaligned"), QStringLiteral("alignUnaligned"));
    addMethod(AlignAlgorithm::Standard, Velmora::tr("&Standard alignment"), QStringLiteral("alignStandard"));
    addMethod(AlignAlgorithm::Myers, Velmora::tr("&Myers O(ND) alignment"), QStringLiteral("alignMyers"));
    addMethod(AlignAlgorithm::Patience, Velmora::tr("&Patience Diff alignment"), QStringLiteral("alignPatience"));
    column->addSpacing(12);
    column->addWidget(m_neverAlign);
    column->addLayout(makeTolerance());
    column->addWidget(m_nearby);
    column->addStretch(1);

    connect(m_methods, &QButtonGroup::idToggled, this, &SettingsPage::changed);
    connect(m_neverAlign, &QCheckBox::toggled, this, &SettingsPage::changed);
    connect(m_nearby, &QCheckBox::toggled, this, &SettingsPage::changed);
}

void AlignmentPage::load(const TextSessionOptions &options)
{
    QAbstractButton *method = m_methods->button(options.alignAlgorithm);
    (method ? method : m_methods->button(int(AlignAlgorithm::Standard)))->setChecked(true);
    m_neverAlign->setChecked(options.neverAlignDifferences);
    m_tolerance->setValue(options.curvatureTolerance);
    m_nearby->setChecked(options.useNearbyMatches);
}

void AlignmentPage::store(TextSessionOptions &options) const
{
    options.alignAlgorithm = m_methods->checkedId();
    options.neverAlignDifferences = m_neverAlign->isChecked();
    options.curvatureTolerance = m_tolerance->value();
    options.useNearbyMatches = m_nearby->isChecked();
}

QLayout *AlignmentPage::makeTolerance()
{
    m_tolerance->setObjectName(QStringLiteral("curvatureTolerance"));
    m_tolerance->setRange(0, 100000);
    m_tolerance->setSingleStep(100);
    auto *label = new QLabel(Velmora::tr("S&kew tolerance:"));
    label->setBuddy(m_tolerance);
    auto *line = new QHBoxLayout;
    line->addWidget(label);
    line->addWidget(m_tolerance);
    line->addWidget(new QLabel(Velmora::tr("lines (default 2000)")));
    line->addStretch(1);
    return line;
}

} // namespace velmora
