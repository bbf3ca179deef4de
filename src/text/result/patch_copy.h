#pragma once

#include "core/runner.h"
#include "session/pane/edit_buffer.h"
#include "session/session_record.h"

#include <QObject>

#include <memory>

namespace velmora {

class DiffDocument;
struct RowRange;

/// Puts differences on the clipboard as a unified diff that turns the left text into the right one, line ends and all.
/// It is written on a worker; a further request takes the place of one that is not done.
class PatchCopy final : public QObject {
    Q_OBJECT
public:
    explicit PatchCopy(QObject *parent);

    /// What is shown: the rows and both texts that they refer to.
    struct Content {
        std::shared_ptr<const DiffDocument> document;
        std::shared_ptr<const EditSnapshot> left;
        std::shared_ptr<const EditSnapshot> right;
        SessionPaths paths;
    };

    /// Copies the differences in `rows` of the document.
    void copy(Content content, RowRange rows);

Q_SIGNALS:
    void message(const QString &text);

private:
    Runner m_runner;
};

} // namespace velmora
