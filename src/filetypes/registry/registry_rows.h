#pragma once

#include "filetypes/registry/engine/registry_compare.h"
#include "session/list/row_source.h"

#include <memory>

namespace velmora {

/// Some rows of a comparison, which stand together, as a list shows them. Texts are made when they are asked for.
class RegistryRows final : public RowSource {
public:
    enum Column { Status, Key, Type, Left, Right };

    /// The rows from `first` to before `end`, named below the key `below`.
    RegistryRows(std::shared_ptr<const RegistryComparison> comparison, qsizetype first, qsizetype end, QString below);
    /// No rows.
    RegistryRows();

    [[nodiscard]] qsizetype count() const override { return m_end - m_first; }
    [[nodiscard]] KeyedRow row(qsizetype number) const override;
    [[nodiscard]] PairStatus status(qsizetype number) const override;
    [[nodiscard]] QString key(qsizetype number) const override;
    [[nodiscard]] bool isNoise(qsizetype number) const override { return at(number).isNoise; }
    [[nodiscard]] bool hasPathKeys() const override { return true; }
    [[nodiscard]] QStringList headings() const override;
    [[nodiscard]] std::optional<Side> side(int column) const override;
    [[nodiscard]] QString text(qsizetype number, int column) const override;

private:
    [[nodiscard]] const RegistryRow &at(qsizetype number) const
    {
        return m_comparison->rows[std::size_t(m_first + number)];
    }

    std::shared_ptr<const RegistryComparison> m_comparison;
    qsizetype m_first = 0;
    qsizetype m_end = 0;
    QString m_below;
};

} // namespace velmora
