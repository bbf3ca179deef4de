#pragma once

#include <QTreeView>

namespace velmora {

class HexScene;

/// The ranges that differ, as a list; choosing one shows it.
class HexDifferenceList final : public QTreeView {
    Q_OBJECT
public:
    /// `scene` outlives the list.
    explicit HexDifferenceList(HexScene &scene, QWidget *parent = nullptr);

Q_SIGNALS:
    /// A range was chosen: the row in which it begins.
    void rowWanted(qint64 row);

private:
    void choose(const QModelIndex &index);

    HexScene &m_scene;
};

} // namespace velmora
