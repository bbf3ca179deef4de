#include "filetypes/table/rule_editor.h"

#include "session/translate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleValidator>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QSignalBlocker>

namespace velmora {

namespace {

constexpr double percent = 100;
constexpr double largestTolerance = 1e15;

QLabel *labelFor(QWidget *buddy, const QString &text)
{
    auto *label = new QLabel(text, buddy->parentWidget());
    label->setBuddy(buddy);
    return label;
}

} // namespace

RuleEditor::RuleEditor(QWidget *parent)
    : QWidget(parent),
      m_meaning(new QComboBox(this)),
      m_tolerance(new QLineEdit(this)),
      m_bound(new QComboBox(this)),
      m_case(new QCheckBox(Velmora::tr("Ignore letter case"), this)),
      m_space(new QCheckBox(Velmora::tr("Ignore white space"), this))
{
    m_meaning->setObjectName(QStringLiteral("meaningBox"));
    m_meaning->addItems({Velmora::tr("Text"), Velmora::tr("Numbers"), Velmora::tr("Dates, day before month"),
                         Velmora::tr("Dates, month before day")});
    m_meaning->setToolTip(Velmora::tr("Numbers and dates count as the same however they are written"));
    m_tolerance->setObjectName(QStringLiteral("toleranceEdit"));
    m_tolerance->setMaximumWidth(120);
    m_tolerance->setValidator(new QDoubleValidator(0, largestTolerance, 12, m_tolerance));
    m_tolerance->setToolTip(Velmora::tr("Numbers that differ by no more than this count as the same"));
    m_bound->setObjectName(QStringLiteral("boundBox"));
    m_bound->setAccessibleName(Velmora::tr("Unit of the tolerance"));
    m_bound->addItems({Velmora::tr("absolute"), Velmora::tr("% of the larger number")});
    m_case->setObjectName(QStringLiteral("caseBox"));
    m_space->setObjectName(QStringLiteral("spaceBox"));
    m_space->setToolTip(Velmora::tr("At the ends, and how much there is between words"));

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setHorizontalSpacing(8);
    grid->addWidget(labelFor(m_meaning, Velmora::tr("Compare values as:")), 0, 0);
    grid->addWidget(m_meaning, 0, 1);
    grid->addWidget(labelFor(m_tolerance, Velmora::tr("Tolerance:")), 0, 2);
    grid->addWidget(m_tolerance, 0, 3);
    grid->addWidget(m_bound, 0, 4);
    grid->addWidget(m_case, 1, 1);
    grid->addWidget(m_space, 1, 3, 1, 2);
    grid->setColumnStretch(5, 1);

    connect(m_meaning, &QComboBox::currentIndexChanged, this, [this] {
        showMeaning();
        Q_EMIT changed();
    });
    connect(m_tolerance, &QLineEdit::textEdited, this, &RuleEditor::changed);
    connect(m_bound, &QComboBox::currentIndexChanged, this, &RuleEditor::changed);
    connect(m_case, &QCheckBox::toggled, this, &RuleEditor::changed);
    connect(m_space, &QCheckBox::toggled, this, &RuleEditor::changed);
    showMeaning();
}

ColumnRule RuleEditor::rule() const
{
    ColumnRule rule;
    rule.meaning = ColumnRule::Meaning(m_meaning->currentIndex());
    rule.bound = ColumnRule::Bound(m_bound->currentIndex());
    rule.ignoresCase = m_case->isChecked();
    rule.ignoresSpace = m_space->isChecked();
    if (rule.meaning != ColumnRule::Meaning::Number) {
        rule.bound = ColumnRule::Bound::Absolute;
        return rule;
    }
    const double tolerance = std::max(0.0, QLocale().toDouble(m_tolerance->text()));
    rule.tolerance = rule.bound == ColumnRule::Bound::Relative ? tolerance / percent : tolerance;
    return rule;
}

void RuleEditor::setRule(const ColumnRule &rule)
{
    const QSignalBlocker blocker(this);
    const double shown = rule.bound == ColumnRule::Bound::Relative ? rule.tolerance * percent : rule.tolerance;
    m_meaning->setCurrentIndex(int(rule.meaning));
    m_bound->setCurrentIndex(int(rule.bound));
    m_tolerance->setText(shown > 0 ? QLocale().toString(shown, 'g', 12) : QString());
    m_case->setChecked(rule.ignoresCase);
    m_space->setChecked(rule.ignoresSpace);
}

void RuleEditor::showMeaning()
{
    const bool isNumber = ColumnRule::Meaning(m_meaning->currentIndex()) == ColumnRule::Meaning::Number;
    m_tolerance->setEnabled(isNumber);
    m_bound->setEnabled(isNumber);
}

} // namespace velmora
