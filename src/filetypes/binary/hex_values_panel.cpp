#include "filetypes/binary/hex_values_panel.h"

#include "filetypes/binary/engine/byte_values.h"
#include "filetypes/binary/hex_scene.h"
#include "session/translate.h"

#include <QHeaderView>

namespace velmora {

namespace {

constexpr std::array<const char *, byteValueCount> names{
    QT_TRANSLATE_NOOP("Velmora", "8 bits, signed"),
    QT_TRANSLATE_NOOP("Velmora", "8 bits, unsigned"),
    QT_TRANSLATE_NOOP("Velmora", "16 bits, signed"),
    QT_TRANSLATE_NOOP("Velmora", "16 bits, unsigned"),
    QT_TRANSLATE_NOOP("Velmora", "32 bits, signed"),
    QT_TRANSLATE_NOOP("Velmora", "32 bits, unsigned"),
    QT_TRANSLATE_NOOP("Velmora", "64 bits, signed"),
    QT_TRANSLATE_NOOP("Velmora", "64 bits, unsigned"),
    QT_TRANSLATE_NOOP("Velmora", "Float, 32 bits"),
    QT_TRANSLATE_NOOP("Velmora", "Float, 64 bits"),
    QT_TRANSLATE_NOOP("Velmora", "Unix time, 32 bits"),
    QT_TRANSLATE_NOOP("Velmora", "Unix time, 64 bits"),
    QT_TRANSLATE_NOOP("Velmora", "Windows file time"),
    QT_TRANSLATE_NOOP("Velmora", "DOS date and time"),
    QT_TRANSLATE_NOOP("Velmora", "UTF-8 character"),
    QT_TRANSLATE_NOOP("Velmora", "UTF-16 character"),
    QT_TRANSLATE_NOOP("Velmora", "Bits"),
};

constexpr std::array orders{ByteOrder::LittleEndian, ByteOrder::BigEndian};

} // namespace

HexValuesPanel::HexValuesPanel(HexScene &scene, QWidget *parent)
    : QTableWidget(byteValueCount, int(bothSides.size() * orders.size()), parent), m_scene(scene)
{
    setObjectName(QStringLiteral("valuesPanel"));
    setAccessibleName(Velmora::tr("What the bytes at the caret mean"));
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    setAlternatingRowColors(true);
    setShowGrid(false);
    setTabKeyNavigation(false);
    QStringList headings;
    for (const char *name : names)
        headings.append(Velmora::tr(name));
    setVerticalHeaderLabels(headings);
    setHorizontalHeaderLabels({Velmora::tr("Left, little endian"), Velmora::tr("Left, big endian"),
                               Velmora::tr("Right, little endian"), Velmora::tr("Right, big endian")});
    horizontalHeader()->setSectionResizeMode(QHeaderView::Stretch);
    // The widest values, and some room around them.
    horizontalHeader()->setMinimumSectionSize(
        fontMetrics().horizontalAdvance(QStringLiteral("0000-00-00 00:00:00 UTC")) +
        2 * fontMetrics().horizontalAdvance(u'0'));
    horizontalHeader()->setDefaultAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    verticalHeader()->setDefaultSectionSize(fontMetrics().height() + 4);
    verticalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    for (int row = 0; row < rowCount(); ++row) {
        for (int column = 0; column < columnCount(); ++column)
            setItem(row, column, new QTableWidgetItem);
    }
    connect(&scene, &HexScene::changed, this, &HexValuesPanel::refresh);
}

void HexValuesPanel::showEvent(QShowEvent *event)
{
    QTableWidget::showEvent(event);
    refresh();
}

void HexValuesPanel::refresh()
{
    if (!isVisible())
        return;
    const bool isSomewhere = m_scene.document() && m_scene.caret().offset >= 0;
    int column = 0;
    for (const Side side : bothSides) {
        std::array<char, byteValueLength> bytes{};
        qint64 length = 0;
        if (isSomewhere) {
            const HexRow row = m_scene.document()->rows.at(m_scene.caretRow());
            const int within = m_scene.caretColumn();
            if (within < row.count[side])
                length = m_scene.document()
                             ->source(side)
                             .readSome(row.offset[side] + within, bytes.data(), qint64(bytes.size()))
                             .length;
        }
        for (const ByteOrder order : orders) {
            const auto values = byteValues(QByteArrayView(bytes.data(), length), order);
            for (int row = 0; row < byteValueCount; ++row) {
                item(row, column)->setText(values[std::size_t(row)]);
                item(row, column)->setToolTip(values[std::size_t(row)]);
            }
            ++column;
        }
    }
}

} // namespace velmora
