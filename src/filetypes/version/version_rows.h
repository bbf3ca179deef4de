#pragma once

#include "filetypes/version/engine/version_compare.h"
#include "session/list/row_source.h"

namespace velmora {

/// The facts of two programs as rows, in the order of `ProgramFact`.
class VersionRows final : public RowSource {
public:
    explicit VersionRows(QList<VersionRow> rows = {});
    [[nodiscard]] qsizetype count() const override { return m_rows.size(); }
    [[nodiscard]] KeyedRow row(qsizetype number) const override;

private:
    QList<VersionRow> m_rows;
};

} // namespace velmora
