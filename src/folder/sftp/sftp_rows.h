#pragma once

#include "folder/sftp/engine/remote_compare.h"
#include "session/list/row_source.h"

#include <memory>

namespace velmora {

/// The rows of a local folder and a remote one, with what is known of contents.
class SftpRows final : public RowSource {
public:
    using Contents = QHash<QString, bool>; ///< by path, whether they are the same

    explicit SftpRows(std::shared_ptr<const RemoteComparison> comparison = std::make_shared<RemoteComparison>(),
                      Contents contents = {});

    [[nodiscard]] qsizetype count() const override { return qsizetype(m_found->rows.size()); }
    [[nodiscard]] KeyedRow row(qsizetype number) const override;
    [[nodiscard]] PairStatus status(qsizetype number) const override;
    [[nodiscard]] QString key(qsizetype number) const override { return at(number).path; }
    [[nodiscard]] bool hasPathKeys() const override { return true; }
    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] QString text(qsizetype number, int column) const override;
    [[nodiscard]] bool isBefore(qsizetype one, qsizetype other, int column) const override;

private:
    [[nodiscard]] const RemoteRow &at(qsizetype number) const { return m_found->rows[std::size_t(number)]; }

    std::shared_ptr<const RemoteComparison> m_found;
    Contents m_contents;
};

} // namespace velmora
