#include "settings/dialogs/folder_spec_page.h"

#include "session/translate.h"
#include "settings/options/folder_session_options.h"

#include <QCheckBox>
#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>

namespace velmora {

FolderSpecPage::FolderSpecPage(const SessionPaths &paths, QWidget *parent)
    : FolderSettingsPage(parent),
      m_leftReadOnly(new QCheckBox(Velmora::tr("Left side is read-only (&1)"))),
      m_rightReadOnly(new QCheckBox(Velmora::tr("Right side is read-only (&2)"))),
      m_description(new QPlainTextEdit)
{
    m_leftReadOnly->setObjectName(QStringLiteral("leftReadOnly"));
    m_leftReadOnly->setToolTip(Velmora::tr("Commands that would write to the left folder are switched off"));
    m_rightReadOnly->setObjectName(QStringLiteral("rightReadOnly"));
    m_rightReadOnly->setToolTip(Velmora::tr("Commands that would write to the right folder are switched off"));
    m_description->setObjectName(QStringLiteral("description"));
    m_description->setTabChangesFocus(true);
    m_description->setPlaceholderText(Velmora::tr("What these settings are for"));

    auto *grid = new QGridLayout;
    grid->setHorizontalSpacing(10);
    grid->setColumnStretch(1, 1);
    addSide(*grid, Velmora::tr("Left folder:"), paths.left, m_leftReadOnly);
    grid->setRowMinimumHeight(grid->rowCount(), 10);
    addSide(*grid, Velmora::tr("Right folder:"), paths.right, m_rightReadOnly);

    auto *label = new QLabel(Velmora::tr("&Description, kept with defaults and presets:"));
    label->setBuddy(m_description);
    auto *column = new QVBoxLayout(this);
    column->addLayout(grid);
    column->addSpacing(12);
    column->addWidget(label);
    column->addWidget(m_description, 1);
    for (const QCheckBox *box : {m_leftReadOnly, m_rightReadOnly})
        connect(box, &QCheckBox::toggled, this, &SettingsPageBase::changed);
}

void FolderSpecPage::load(const FolderSessionOptions &options)
{
    m_leftReadOnly->setChecked(options.leftReadOnly);
    m_rightReadOnly->setChecked(options.rightReadOnly);
}

void FolderSpecPage::store(FolderSessionOptions &options) const
{
    options.leftReadOnly = m_leftReadOnly->isChecked();
    options.rightReadOnly = m_rightReadOnly->isChecked();
}

void FolderSpecPage::setDescription(const QString &description)
{
    m_description->setPlainText(description);
}

QString FolderSpecPage::description() const
{
    return m_description->toPlainText();
}

void FolderSpecPage::addSide(QGridLayout &grid, const QString &title, const QString &path, QCheckBox *readOnly)
{
    // A line instead of a label, since long paths then scroll and can be copied; nothing about it looks editable.
    auto *line = new QLineEdit(path.isEmpty() ? Velmora::tr("not chosen yet") : QDir::toNativeSeparators(path));
    line->setReadOnly(true);
    line->setFrame(false);
    line->setCursorPosition(0);
    line->setDisabled(path.isEmpty());
    QPalette palette = line->palette();
    palette.setBrush(QPalette::Base, Qt::transparent);
    line->setPalette(palette);
    line->setAccessibleName(title);
    const int row = grid.rowCount();
    grid.addWidget(new QLabel(title), row, 0);
    grid.addWidget(line, row, 1);
    grid.addWidget(readOnly, row + 1, 1);
}

} // namespace velmora
