#pragma once

#include "core/cancel_flag.h"
#include "core/progress.h"
#include "filetypes/table/table_document.h"

#include <QString>

#include <memory>

namespace velmora {

/// The largest file that a session compares, in bytes.
inline constexpr qint64 tableSizeLimit = 52'428'800;

/// What one comparison compares, and how.
struct TableRequest {
    Sides<QString> paths;
    QChar delimiter = u',';
    bool hasHeader = true;
    bool columnsByName = false;       ///< see `TableOptions`
    QList<ColumnRef> keys = {};       ///< fields of the first row; without any rows are aligned in their order
    QList<ColumnChoice> columns = {}; ///< of which rules are looked at
};

/// What became of it.
struct TableResult {
    enum class Fault : quint8 { None, TooLarge, NothingRead };

    Fault fault = Fault::None;
    std::shared_ptr<const TableDocument> document = {}; ///< null with a fault
};

/// Reads both files and compares them. A file that cannot be read is an empty table, unless both are.
[[nodiscard]] TableResult compareTableFiles(const TableRequest &request, const CancelFlag &cancel, Progress &progress);

} // namespace velmora
