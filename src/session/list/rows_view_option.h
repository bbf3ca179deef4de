#pragma once

#include "core/rows_view.h"

class QJsonObject;

namespace velmora {

// Which rows of a list are shown, as an option of a session: "onlyDifferences" or "onlySame", true; neither for all.
void keepRowsView(RowsView view, QJsonObject &options);
[[nodiscard]] RowsView keptRowsView(const QJsonObject &options);

} // namespace velmora
