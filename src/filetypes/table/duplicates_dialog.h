#pragma once

#include "filetypes/table/table_document.h"

#include <QDialog>

#include <memory>

namespace velmora {

/// The keys that several rows of a table have, with these rows.
class DuplicatesDialog final : public QDialog {
    Q_OBJECT
public:
    DuplicatesDialog(const std::shared_ptr<const TableDocument> &document, QWidget *parent);

Q_SIGNALS:
    /// A person wants to see the row of the result that stands for a key.
    void rowWanted(qint32 row);

private:
    void goTo(int line);

    std::shared_ptr<const TableDocument> m_document;
};

} // namespace velmora
