#pragma once

#include "core/side.h"

#include <QAbstractTableModel>
#include <QIcon>

#include <array>

namespace velmora {

class TableScene;

/// One side of a table comparison as a model: a row for each place of the scene.
class TableModel final : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Role {
        ColourRole = Qt::UserRole, ///< a TableColour
        ChangedRole,               ///< whether the cell differs from that of the other side
        LeftOutRole,               ///< whether its column is not compared
    };

    TableModel(TableScene &scene, Side side, QObject *parent = nullptr);

    [[nodiscard]] int rowCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] int columnCount(const QModelIndex &parent = {}) const override;
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override;
    [[nodiscard]] QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    /// Takes up a changed theme: the signs beside the rows.
    void refreshTheme();

private:
    [[nodiscard]] QString fullText(const QModelIndex &index) const;
    [[nodiscard]] QVariant rowHeader(int place, int role) const;
    [[nodiscard]] QVariant columnHeader(int place, int role) const;

    TableScene &m_scene;
    Side m_side;
    std::array<QIcon, 4> m_signs; ///< by status of a row
};

} // namespace velmora
