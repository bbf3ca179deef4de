#pragma once

#include "folder/usage/usage_rows.h"

namespace velmora {

/// The largest files of a scan, one below the other.
class LargestRows final : public FixedRowTree {
public:
    enum Column { Name, Size, Folder };

    explicit LargestRows(SharedUsage result);

    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qint32 node, int column) const override;
    [[nodiscard]] Qt::Alignment alignment(int column) const override;
    [[nodiscard]] QString hint(qint32 node, int column) const override;
    [[nodiscard]] RowPicture picture(qint32 /*node*/) const override { return RowPicture::File; }
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override;

    [[nodiscard]] const QString &path(qint32 node) const { return file(node).path; }

private:
    [[nodiscard]] const LargeFile &file(qint32 node) const { return m_result->usage.largest[node]; }

    SharedUsage m_result;
};

} // namespace velmora
