#pragma once

#include <QtGlobal>

class QSettings;

namespace velmora {

/// How much is kept of files that commands have replaced or deleted, for all folder comparisons together.
struct KeptCopies {
    qint64 bytes = qint64(2) * 1024 * 1024 * 1024; ///< 0 keeps nothing
    int days = 30;

    friend bool operator==(const KeptCopies &, const KeptCopies &) = default;
};

/// From `SessionSettings` outside tests. What is missing or makes no sense has its built-in value.
[[nodiscard]] KeptCopies loadKeptCopies(const QSettings &settings);
void saveKeptCopies(QSettings &settings, const KeptCopies &kept);

} // namespace velmora
