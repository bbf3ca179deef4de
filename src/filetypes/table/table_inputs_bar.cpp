#include "filetypes/table/table_inputs_bar.h"

#include "session/translate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

namespace velmora {

TableInputsBar::TableInputsBar(QWidget *parent)
    : QToolBar(parent), m_delimiter(new QComboBox(this)), m_header(new QCheckBox(this)), m_key(new QComboBox(this))
{
    setObjectName(QStringLiteral("inputsBar"));
    setMovable(false);
    setFloatable(false);
    addSeparator();
    m_delimiter->setObjectName(QStringLiteral("delimiterBox"));
    m_delimiter->setMinimumWidth(100);
    m_delimiter->addItem(Velmora::tr("Comma (,)"), QChar(u','));
    m_delimiter->addItem(Velmora::tr("Tab (\\t)"), QChar(u'\t'));
    m_delimiter->addItem(Velmora::tr("Semicolon (;)"), QChar(u';'));
    m_delimiter->addItem(Velmora::tr("Pipe (|)"), QChar(u'|'));
    addLabel(Velmora::tr("Delimiter:"), m_delimiter);
    addWidget(m_delimiter);
    addSeparator();
    m_header->setObjectName(QStringLiteral("headerBox"));
    m_header->setText(Velmora::tr("First row is header"));
    m_header->setChecked(true);
    addWidget(m_header);
    addSeparator();
    m_key->setObjectName(QStringLiteral("keyBox"));
    m_key->setMinimumWidth(120);
    m_key->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_key->setMinimumContentsLength(20);
    m_key->setToolTip(Velmora::tr("Rows with the same value in this column are compared; takes effect at the next "
                                  "comparison"));
    offerKeys({});
    addLabel(Velmora::tr("Key column:"), m_key);
    addWidget(m_key);
}

void TableInputsBar::addLabel(const QString &text, QWidget *buddy)
{
    constexpr int gap = 6;
    auto *label = new QLabel(text, this);
    label->setBuddy(buddy);
    label->setContentsMargins(gap, 0, gap, 0);
    addWidget(label);
}

QChar TableInputsBar::delimiter() const
{
    return m_delimiter->currentData().toChar();
}

void TableInputsBar::setDelimiter(QChar delimiter)
{
    if (const int index = m_delimiter->findData(delimiter); index >= 0)
        m_delimiter->setCurrentIndex(index);
}

QString TableInputsBar::delimiterName(QChar delimiter) const
{
    return m_delimiter->itemText(m_delimiter->findData(delimiter));
}

bool TableInputsBar::hasHeader() const
{
    return m_header->isChecked();
}

void TableInputsBar::setHasHeader(bool hasHeader)
{
    m_header->setChecked(hasHeader);
}

qint32 TableInputsBar::key() const
{
    return m_key->currentData().toInt();
}

QString TableInputsBar::keyName() const
{
    return key() < 0 ? QString() : m_key->currentText();
}

void TableInputsBar::setKey(qint32 key)
{
    if (const int index = m_key->findData(key); index >= 0)
        m_key->setCurrentIndex(index);
}

void TableInputsBar::offerKeys(const QStringList &names)
{
    const QVariant chosen = m_key->currentData();
    m_key->clear();
    m_key->addItem(Velmora::tr("None (match by row order)"), -1);
    for (qsizetype column = 0; column < names.size(); ++column)
        m_key->addItem(names[column], int(column));
    m_key->setCurrentIndex(std::max(0, m_key->findData(chosen)));
}

void TableInputsBar::offerKey(qint32 key, const QString &name)
{
    if (m_key->findData(key) < 0)
        m_key->addItem(name, key);
    setKey(key);
}

} // namespace velmora
