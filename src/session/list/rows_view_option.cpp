#include "session/list/rows_view_option.h"

#include <QJsonObject>

namespace velmora {

namespace {

constexpr QLatin1String differencesKey("onlyDifferences");
constexpr QLatin1String sameKey("onlySame");

} // namespace

void keepRowsView(RowsView view, QJsonObject &options)
{
    if (view != RowsView::All)
        options.insert(view == RowsView::Same ? sameKey : differencesKey, true);
}

RowsView keptRowsView(const QJsonObject &options)
{
    if (options.value(differencesKey).toBool())
        return RowsView::Differences;
    return options.value(sameKey).toBool() ? RowsView::Same : RowsView::All;
}

} // namespace velmora
