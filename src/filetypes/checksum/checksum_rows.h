#pragma once

#include "filetypes/checksum/engine/checksum_check.h"
#include "session/list/row_source.h"

namespace velmora {

/// How an algorithm is called.
[[nodiscard]] QString checksumLabel(ChecksumAlgorithm algorithm);

/// The files of a checked list as rows: what the list says on the left, what was found on the right.
class ChecksumRows final : public RowSource {
public:
    explicit ChecksumRows(QList<CheckedFile> files = {});

    [[nodiscard]] qsizetype count() const override { return m_files.size(); }
    [[nodiscard]] KeyedRow row(qsizetype number) const override;
    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qsizetype number, int column) const override;
    [[nodiscard]] bool isBefore(qsizetype one, qsizetype other, int column) const override;

private:
    QList<CheckedFile> m_files;
};

/// How many files have which status, in words.
[[nodiscard]] QString checksumCheckText(const ChecksumCheck &check);

} // namespace velmora
