#include "folder/compare/folder_filter_bar.h"

#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>
#include <QToolButton>

namespace velmora {

QString masksOfEntry(const QString &text)
{
    const qsizetype open = text.lastIndexOf(u'(');
    if (open < 0 || !text.endsWith(u')'))
        return text.trimmed();
    const QString masks = text.mid(open + 1, text.size() - open - 2).trimmed();
    // The entry for all files has two stars, and no mask.
    return masks == QLatin1String("* *") ? QString() : masks;
}

FolderFilterBar::FolderFilterBar(QWidget *parent)
    : QWidget(parent), m_masks(new QComboBox(this)), m_advanced(new QToolButton(this)), m_effect(new QLabel(this))
{
    m_masks->setObjectName(QStringLiteral("nameFilter"));
    m_masks->setEditable(true);
    m_masks->setInsertPolicy(QComboBox::NoInsert);
    m_masks->addItems({Velmora::tr("All files (* *)"), Velmora::tr("C++ source (*.cpp;*.hpp;*.c;*.h;*.cc)"),
                       Velmora::tr("Delphi source (*.pas;*.inc;*.dfm;*.nfm;*.xfm;*.dpr;*.dpk)"),
                       Velmora::tr("HTML source (*.htm;*.html;*.xml;*.jpg;*.gif;*.png)"),
                       Velmora::tr("Java source (*.java;*.ji;*.jit)")});
    m_masks->setEditText(QString());
    m_masks->setToolTip(Velmora::tr("File name filter; wildcards * and ?; separate patterns with semicolons"));
    m_masks->lineEdit()->setPlaceholderText(Velmora::tr("All files (* *)"));
    m_masks->lineEdit()->setClearButtonEnabled(true);
    m_masks->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_masks->setMaximumWidth(420);
    m_advanced->setObjectName(QStringLiteral("advancedFilters"));
    m_advanced->setText(Velmora::tr("Advanced..."));
    m_advanced->setToolTip(Velmora::tr("Set size and date range filters"));
    m_advanced->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    m_advanced->setCheckable(false);
    m_effect->setObjectName(QStringLiteral("filterEffect"));

    auto *label = new QLabel(Velmora::tr("Filter:"), this);
    label->setBuddy(m_masks);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(8, 2, 8, 2);
    row->setSpacing(6);
    row->addWidget(label);
    row->addWidget(m_masks, 1);
    row->addWidget(m_advanced);
    row->addWidget(m_effect);
    row->addStretch(1);

    connect(m_masks, &QComboBox::activated, this,
            [this](int index) { m_masks->setEditText(masksOfEntry(m_masks->itemText(index))); });
    connect(m_masks, &QComboBox::editTextChanged, this, &FolderFilterBar::masksChanged);
    connect(m_masks->lineEdit(), &QLineEdit::returnPressed, this, &FolderFilterBar::done);
    connect(m_advanced, &QToolButton::clicked, this, &FolderFilterBar::advancedWanted);
    refreshTheme();
}

QString FolderFilterBar::masks() const
{
    return masksOfEntry(m_masks->currentText());
}

void FolderFilterBar::setMasks(const QString &masks)
{
    m_masks->setEditText(masks);
}

void FolderFilterBar::focusMasks()
{
    m_masks->setFocus(Qt::ShortcutFocusReason);
    m_masks->lineEdit()->selectAll();
}

void FolderFilterBar::showEffect(qint64 hidden, bool limits)
{
    QStringList parts;
    if (limits)
        parts.append(Velmora::tr("size or date limits"));
    if (hidden > 0)
        parts.append(Velmora::tr("%1 hidden").arg(QLocale().toString(hidden)));
    m_effect->setText(parts.join(Velmora::tr(", ")));
}

void FolderFilterBar::refreshTheme()
{
    m_advanced->setIcon(themedIcon(QStringLiteral("filter.png")));
}

} // namespace velmora
