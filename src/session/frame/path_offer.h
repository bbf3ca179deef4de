#pragma once

#include "core/runner.h"

#include <QObject>
#include <QString>

class QCompleter;
class QLineEdit;

namespace velmora {

/// Offers how a path that is typed into a line may go on, from what is on the disk.
///
/// A folder is read on a worker when the first letter in it is typed. What comes late is offered only while the line
/// has the keyboard, or else the list would lie over the next line and take what is typed there.
class PathOffer final : public QObject {
    Q_OBJECT
public:
    /// Becomes a child of the line, and its completer.
    explicit PathOffer(QLineEdit &line);

    /// What stands in the line has changed by typing.
    void pathTyped();

private:
    class Entries;

    void offer();

    QLineEdit &m_line;
    Entries *m_entries;
    QCompleter *m_completer;
    Runner m_runner;
    QString m_folder; ///< as it was typed, with the separator at its end: what was read, or is being read
};

} // namespace velmora
