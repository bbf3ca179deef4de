#pragma once

#include <QString>
#include <QStringList>

namespace velmora {

class TreeModel;
class TreeView;
class UsageRows;
class UsageTree;

/// What a person has opened in the rows of a scan and where they are, by paths: in another scan of the same folder the
/// nodes have other numbers, and some are gone.
class UsagePlace {
public:
    UsagePlace() = default;
    /// That of `rows`, which are of `tree`, as `view` shows them.
    UsagePlace(const UsageTree &tree, const TreeModel &rows, const TreeView &view);

    /// Opens what was open and is still there.
    void openIn(UsageRows &rows, const UsageTree &tree) const;
    /// The node to go to: the one that was current or, where that is gone, a neighbour or a folder around it; 0, the
    /// scanned folder, where nothing is left.
    [[nodiscard]] qint32 currentIn(const UsageTree &tree) const;

private:
    void addNeighbours(const UsageTree &tree, const TreeModel &rows, qint32 current);

    QStringList m_open;
    QStringList m_current; ///< the best one first
};

} // namespace velmora
