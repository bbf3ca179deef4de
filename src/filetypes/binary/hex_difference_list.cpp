#include "filetypes/binary/hex_difference_list.h"

#include "filetypes/binary/hex_scene.h"
#include "session/translate.h"

#include <QAbstractTableModel>
#include <QHeaderView>
#include <QLocale>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

enum Column { Kind, LeftOffset, LeftLength, RightOffset, RightLength, ColumnCount };

class DifferenceModel final : public QAbstractTableModel {
public:
    DifferenceModel(HexScene &scene, QObject *parent) : QAbstractTableModel(parent), m_scene(scene)
    {
        connect(&scene, &HexScene::documentChanged, this, [this] {
            beginResetModel();
            m_document = m_scene.sharedDocument();
            endResetModel();
        });
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() || !m_document ? 0 : int(m_document->differences.size());
    }
    [[nodiscard]] int columnCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : ColumnCount;
    }

    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::TextAlignmentRole)
            return QVariant(Qt::AlignVCenter | (index.column() == Kind ? Qt::AlignLeft : Qt::AlignRight));
        if (role != Qt::DisplayRole)
            return {};
        const AlignedRange &range = m_document->differences[std::size_t(index.row())];
        switch (index.column()) {
        case LeftOffset:
            return offsetText(range.left);
        case LeftLength:
            return QLocale().toString(range.leftLength);
        case RightOffset:
            return offsetText(range.right);
        case RightLength:
            return QLocale().toString(range.rightLength);
        default:
            return kindText(range.kind);
        }
    }

    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override
    {
        if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
            return {};
        const std::array<QString, ColumnCount> headings{Velmora::tr("Difference"), Velmora::tr("Left offset"),
                                                        Velmora::tr("Left bytes"), Velmora::tr("Right offset"),
                                                        Velmora::tr("Right bytes")};
        return headings[std::size_t(section)];
    }

private:
    static QString offsetText(qint64 offset) { return QStringLiteral("0x") + QString::number(offset, 16).toUpper(); }
    static QString kindText(RangeKind kind)
    {
        switch (kind) {
        case RangeKind::Deleted:
            return Velmora::tr("deleted");
        case RangeKind::Inserted:
            return Velmora::tr("inserted");
        default:
            return Velmora::tr("changed");
        }
    }

    HexScene &m_scene;
    std::shared_ptr<const HexDocument> m_document;
};

} // namespace

HexDifferenceList::HexDifferenceList(HexScene &scene, QWidget *parent) : QTreeView(parent), m_scene(scene)
{
    setObjectName(QStringLiteral("differenceList"));
    setAccessibleName(Velmora::tr("Ranges that differ"));
    setModel(new DifferenceModel(scene, this));
    setRootIsDecorated(false);
    setUniformRowHeights(true);
    setAlternatingRowColors(true);
    setAllColumnsShowFocus(true);
    int widest = 0;
    for (int column = 0; column < ColumnCount; ++column)
        widest = std::max(widest, header()->sectionSizeHint(column));
    header()->setMinimumSectionSize(widest);
    header()->setSectionResizeMode(QHeaderView::Stretch);
    connect(this, &QTreeView::activated, this, &HexDifferenceList::choose);
    connect(this, &QTreeView::clicked, this, &HexDifferenceList::choose);
}

void HexDifferenceList::choose(const QModelIndex &index)
{
    const HexDocument &document = *m_scene.document();
    const AlignedRange &range = document.differences[std::size_t(index.row())];
    const Side side = range.leftLength > 0 ? Side::Left : Side::Right;
    Q_EMIT rowWanted(document.rows.rowOf(side, side == Side::Left ? range.left : range.right));
}

} // namespace velmora
