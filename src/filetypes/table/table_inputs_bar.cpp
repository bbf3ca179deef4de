#include "filetypes/table/table_inputs_bar.h"

#include "session/plain_text.h"
#include "session/translate.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

#include <algorithm>

namespace velmora {

namespace {

constexpr int severalKeys = -2;            ///< the data of the entry for several columns
constexpr int nameRole = Qt::UserRole + 1; ///< what a column is called, where it was chosen by name

QString keyHint()
{
    return Velmora::tr("Rows with the same value in this column are compared; takes effect at the next comparison");
}

} // namespace

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
    m_key->setToolTip(keyHint());
    offerKeys({}, {});
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

QList<ColumnRef> TableInputsBar::keys() const
{
    const int data = m_key->currentData().toInt();
    if (data == severalKeys)
        return m_several;
    return data < 0 ? QList<ColumnRef>() : QList<ColumnRef>{{data, m_key->currentData(nameRole).toString()}};
}

QStringList TableInputsBar::keyNames() const
{
    const QList<ColumnRef> keys = this->keys();
    if (keys.size() == 1)
        return {m_key->currentText()};
    QStringList names;
    for (const ColumnRef &key : keys)
        names.append(key.name);
    return names;
}

void TableInputsBar::setKeys(const QList<ColumnRef> &keys)
{
    const int data = keys.isEmpty() ? -1 : keys.size() == 1 ? int(keys.first().column) : severalKeys;
    if (const int old = m_key->findData(severalKeys); old >= 0)
        m_key->removeItem(old);
    m_several = keys.size() > 1 ? keys : QList<ColumnRef>();
    if (data == severalKeys) {
        QStringList names;
        for (const ColumnRef &key : keys)
            names.append(key.name);
        m_key->addItem(names.join(QStringLiteral(" + ")), severalKeys);
    } else if (data >= 0 && m_key->findData(data) < 0) {
        m_key->addItem(keys.first().name, data);
    }
    const int index = m_key->findData(data);
    if (data >= 0)
        m_key->setItemData(index, keys.first().name, nameRole);
    m_key->setCurrentIndex(index);
    m_key->setToolTip(plainToolTip(keyHint() + (keys.size() > 1 ? u'\n' + m_key->currentText() : QString())));
}

void TableInputsBar::offerKeys(const QStringList &names, const QList<ColumnRef> &found)
{
    const QVariant chosen = m_key->currentData();
    const QList<ColumnRef> keys = this->keys();
    const bool isByName =
        std::any_of(keys.begin(), keys.end(), [](const ColumnRef &key) { return !key.name.isEmpty(); });
    m_key->clear();
    m_key->addItem(Velmora::tr("None (match by row order)"), -1);
    for (qsizetype column = 0; column < names.size(); ++column)
        m_key->addItem(names[column], int(column));
    if (isByName)
        setKeys(found);
    else
        m_key->setCurrentIndex(std::max(0, m_key->findData(chosen)));
}

} // namespace velmora
