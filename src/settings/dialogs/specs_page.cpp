#include "settings/dialogs/specs_page.h"

#include "session/translate.h"
#include "settings/options/text_session_options.h"

#include <QCheckBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>

namespace velmora {

namespace {

/// The label, the field and the read-only switch of one side.
void addSide(QGridLayout &grid, int row, const QString &text, QLineEdit *path, QCheckBox *readOnly)
{
    auto *label = new QLabel(text);
    label->setBuddy(path);
    grid.addWidget(label, row, 0);
    grid.addWidget(path, row, 1);
    grid.addWidget(readOnly, row, 2);
}

} // namespace

SpecsPage::SpecsPage(QWidget *parent)
    : SettingsPage(parent),
      m_leftPath(new QLineEdit),
      m_rightPath(new QLineEdit),
      m_leftReadOnly(new QCheckBox(Velmora::tr("&Disable editing"))),
      m_rightReadOnly(new QCheckBox(Velmora::tr("Disable &editing"))),
      m_description(new QPlainTextEdit)
{
    m_leftPath->setObjectName(QStringLiteral("leftPath"));
    m_rightPath->setObjectName(QStringLiteral("rightPath"));
    m_leftReadOnly->setObjectName(QStringLiteral("leftReadOnly"));
    m_leftReadOnly->setToolTip(Velmora::tr("Prevent editing the left path in the main window"));
    m_rightReadOnly->setObjectName(QStringLiteral("rightReadOnly"));
    m_rightReadOnly->setToolTip(Velmora::tr("Prevent editing the right path in the main window"));
    m_description->setObjectName(QStringLiteral("description"));
    m_description->setTabChangesFocus(true);

    auto *copy = new QPushButton(Velmora::tr("&Copy left path to right"));
    copy->setObjectName(QStringLiteral("copyLeftPath"));
    connect(copy, &QPushButton::clicked, this, &SpecsPage::copyLeftToRight);
    auto *swap = new QPushButton(Velmora::tr("&Swap left and right paths"));
    swap->setObjectName(QStringLiteral("swapPaths"));
    connect(swap, &QPushButton::clicked, this, &SpecsPage::swapPaths);
    for (QPushButton *button : {copy, swap})
        button->setAutoDefault(false);
    auto *buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(copy);
    buttons->addWidget(swap);
    buttons->addStretch(1);

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    addSide(*grid, 0, Velmora::tr("&Left file:"), m_leftPath, m_leftReadOnly);
    addSide(*grid, 1, Velmora::tr("&Right file:"), m_rightPath, m_rightReadOnly);
    grid->addLayout(buttons, 2, 1, 1, 2);

    auto *descriptionLabel = new QLabel(Velmora::tr("Descri&ption:"));
    descriptionLabel->setBuddy(m_description);
    auto *column = new QVBoxLayout(this);
    column->addLayout(grid);
    column->addSpacing(8);
    column->addWidget(descriptionLabel);
    column->addWidget(m_description, 1);
}

void SpecsPage::load(const TextSessionOptions &options)
{
    m_leftPath->setText(QDir::toNativeSeparators(options.leftPath));
    m_rightPath->setText(QDir::toNativeSeparators(options.rightPath));
    m_leftReadOnly->setChecked(options.leftReadOnly);
    m_rightReadOnly->setChecked(options.rightReadOnly);
    m_description->setPlainText(options.description);
}

void SpecsPage::store(TextSessionOptions &options) const
{
    options.leftPath = QDir::fromNativeSeparators(m_leftPath->text());
    options.rightPath = QDir::fromNativeSeparators(m_rightPath->text());
    options.leftReadOnly = m_leftReadOnly->isChecked();
    options.rightReadOnly = m_rightReadOnly->isChecked();
    options.description = m_description->toPlainText();
}

void SpecsPage::copyLeftToRight()
{
    m_rightPath->setText(m_leftPath->text());
}

void SpecsPage::swapPaths()
{
    const QString left = m_leftPath->text();
    m_leftPath->setText(m_rightPath->text());
    m_rightPath->setText(left);
}

} // namespace velmora
