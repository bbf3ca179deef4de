#include "filetypes/registry/registry_key_tree.h"

#include "session/diff_colours.h"
#include "session/list/row_source.h"
#include "session/translate.h"

#include <QLocale>

namespace velmora {

namespace {

/// Deeper keys than the registry allows stand beside the deepest ones.
constexpr std::size_t deepest = 600;

class NodeMaker {
public:
    NodeMaker() { open({}); }

    void add(const QString &path, qint32 number, const RegistryKeyPair &pair)
    {
        closeUntil(path, pair.firstRow);
        qsizetype at = m_open.back().size();
        while (m_open.size() < deepest) {
            const qsizetype end = path.indexOf(u'\\', at + 1);
            open(end < 0 ? path : path.first(end), pair.firstRow);
            if (end < 0)
                break;
            at = end;
        }
        m_made.nodes.back().pair = number;
        const bool isEmptyOnBoth = pair.rowCount == 0;
        for (const qint32 around : m_numbers) {
            RegistryKeyNode &node = m_made.nodes[std::size_t(around)];
            node.differences += pair.counts.differences();
            node.same += pair.counts.same + (isEmptyOnBoth ? 1 : 0);
        }
    }

    RegistryKeyNodes finish(qsizetype rows)
    {
        for (const qint32 around : m_numbers)
            m_made.nodes[std::size_t(around)].endRow = rows;
        return withoutChains();
    }

private:
    void open(const QString &path, qsizetype firstRow = 0)
    {
        if (!m_numbers.empty())
            ++m_children[std::size_t(m_numbers.back())];
        m_children.push_back(0);
        m_made.depths.push_back(quint16(m_open.size()));
        m_numbers.push_back(qint32(m_made.nodes.size()));
        m_made.nodes.push_back({path, firstRow});
        m_open.push_back(path);
    }

    void closeUntil(const QString &path, qsizetype row)
    {
        while (m_open.size() > 1 && !isWithin(path, m_open.back())) {
            m_made.nodes[std::size_t(m_numbers.back())].endRow = row;
            m_open.pop_back();
            m_numbers.pop_back();
        }
    }

    /// A key that no side names and in which there is only one more stands together with that: the way to where
    /// something is would take the room of a narrow tree.
    [[nodiscard]] RegistryKeyNodes withoutChains() const
    {
        RegistryKeyNodes kept;
        std::vector<quint16> below; // of the keys around, the depth of what is in them now
        for (std::size_t k = 0; k < m_made.nodes.size(); ++k) {
            below.resize(m_made.depths[k]);
            const quint16 depth = below.empty() ? quint16(0) : below.back();
            const bool leadsOn = m_made.nodes[k].pair < 0 && m_children[k] == 1;
            below.push_back(quint16(leadsOn ? depth : depth + 1));
            if (leadsOn)
                continue;
            kept.nodes.push_back(m_made.nodes[k]);
            kept.depths.push_back(depth);
        }
        return kept;
    }

    RegistryKeyNodes m_made;
    std::vector<quint32> m_children; ///< of each node
    std::vector<QString> m_open;     ///< the paths of the keys that the current one is in
    std::vector<qint32> m_numbers;
};

} // namespace

RegistryKeyNodes keyNodesOf(const RegistryComparison &comparison)
{
    NodeMaker maker;
    for (std::size_t k = 0; k < comparison.keys.size(); ++k)
        maker.add(comparison.key(comparison.keys[k]).path, qint32(k), comparison.keys[k]);
    return maker.finish(qsizetype(comparison.rows.size()));
}

RegistryKeyTree::RegistryKeyTree(std::shared_ptr<const RegistryComparison> comparison, RegistryKeyNodes nodes)
    : FixedRowTree(std::move(nodes.depths)), m_comparison(std::move(comparison)), m_nodes(std::move(nodes.nodes))
{
    for (qint32 number = 0; number <= firstBranch() && number < count(); ++number)
        setExpanded(number, true);
}

qint32 RegistryKeyTree::firstBranch() const
{
    qint32 number = 0;
    const auto hasRows = [this](qint32 key) { return node(key).pair >= 0; };
    while (number + 1 < count() && !hasRows(number) && end(number + 1) == end(number))
        ++number;
    return number;
}

bool RegistryKeyTree::isShown(qint32 number) const
{
    if (m_view == RowsView::All || number == 0)
        return true;
    return (m_view == RowsView::Same ? node(number).same : node(number).differences) > 0;
}

QStringList RegistryKeyTree::headings() const
{
    return {Velmora::tr("Registry key"), Velmora::tr("Diff")};
}

QString RegistryKeyTree::text(qint32 number, int column) const
{
    const RegistryKeyNode &key = node(number);
    if (column == 1)
        return key.differences == 0 ? QString() : QLocale().toString(qint64(key.differences));
    if (key.path.isEmpty())
        return Velmora::tr("All keys");
    const qsizetype around = parent(number) < 0 ? 0 : node(parent(number)).path.size();
    return key.path.mid(around == 0 ? 0 : around + 1);
}

Qt::Alignment RegistryKeyTree::alignment(int column) const
{
    return (column == 1 ? Qt::AlignRight : Qt::AlignLeft) | Qt::AlignVCenter;
}

QString RegistryKeyTree::hint(qint32 number, int column) const
{
    const PairStatus state = status(number);
    return column == 0 && state != PairStatus::Same ? node(number).path + u'\n' + statusText(state) : node(number).path;
}

RowPicture RegistryKeyTree::picture(qint32 /*node*/) const
{
    return RowPicture::None; // all are keys
}

PairStatus RegistryKeyTree::status(qint32 number) const
{
    const RegistryKeyNode &key = node(number);
    if (key.differences == 0)
        return PairStatus::Same;
    if (key.pair < 0)
        return PairStatus::Changed;
    const Sides<qint32> &keys = m_comparison->keys[std::size_t(key.pair)].keys;
    if (keys.left >= 0 && keys.right >= 0)
        return PairStatus::Changed;
    return keys.left >= 0 ? PairStatus::LeftOnly : PairStatus::RightOnly;
}

QVariant RegistryKeyTree::data(qint32 number, int /*column*/, int role) const
{
    const PairStatus state = status(number);
    const bool isAlone = state == PairStatus::LeftOnly || state == PairStatus::RightOnly;
    if (isAlone && role == Qt::BackgroundRole)
        return diffColour(state == PairStatus::LeftOnly ? DiffColour::Removed : DiffColour::Added);
    return isAlone && role == Qt::ForegroundRole ? QVariant(diffColour(DiffColour::Text)) : QVariant();
}

bool RegistryKeyTree::isBefore(qint32 one, qint32 other, int column) const
{
    return column == 1 ? node(one).differences < node(other).differences : RowTree::isBefore(one, other, column);
}

} // namespace velmora
