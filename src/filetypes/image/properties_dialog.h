#pragma once

#include "core/keyed_rows.h"

#include <QDialog>

class QTreeWidget;

namespace velmora {

/// What two image files say beside their pixels, row by row, what differs with a sign before it.
class ImagePropertiesDialog final : public QDialog {
    Q_OBJECT
public:
    explicit ImagePropertiesDialog(QWidget *parent);

    void setRows(const QList<KeyedRow> &rows);

private:
    QTreeWidget *m_rows;
};

} // namespace velmora
