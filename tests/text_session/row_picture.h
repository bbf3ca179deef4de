#pragma once

#include "text/engine/diff_line.h"

#include <QByteArray>
#include <QList>

namespace velmora::test {

/// Rows that pair line k with line k: '=' equal, '~' modified; '+' and '-' have one line.
inline QList<AlignedRow> rowsOf(const QByteArray &picture)
{
    QList<AlignedRow> rows;
    qint32 left = 0;
    qint32 right = 0;
    for (const char sign : picture) {
        if (sign == '+')
            rows.append({Added, -1, ++right});
        else if (sign == '-')
            rows.append({Removed, ++left, -1});
        else
            rows.append({sign == '~' ? Modified : Equal, ++left, ++right});
    }
    return rows;
}

} // namespace velmora::test
