#pragma once

#include <QLineEdit>
#include <QWidget>

class QAction;
class QToolButton;

namespace velmora {

class PathOffer;

/// The line for the path of one input, with the button beside it that asks for a file or folder.
///
/// Shows paths with the system's own separators and hands them out with "/"; addresses, and what is no path, as they
/// stand. A passing copy (`session/passing_copies.h`) is shown by where it is from, with a lock before it. Offers how a
/// path that is typed may go on: from the paths that it was given, or else from what is on the disk. Drops land on the
/// session behind it, not here.
class PathEdit final : public QWidget {
    Q_OBJECT
public:
    /// `placeholder` stands in the empty line, `browseHint` names the button; without it there is none. `line` becomes
    /// the line, which takes drops by itself then.
    PathEdit(const QString &placeholder, const QString &browseHint, QWidget *parent = nullptr,
             QLineEdit *line = nullptr);

    /// The path without surrounding blanks or quotes, empty when there is none.
    [[nodiscard]] QString path() const;
    /// Replaces the path without a signal.
    void setPath(const QString &path);

    void setReadOnly(bool readOnly);

    /// Offers these paths while one is typed.
    void setRecentPaths(const QStringList &paths);

    [[nodiscard]] QLineEdit &lineEdit() { return *m_line; }

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void browseRequested();
    /// A person has changed the path.
    void pathEdited();
    /// A person has pressed Return in the line.
    void submitted();

private:
    void offerFromDisk();
    void showLock();

    QLineEdit *m_line;
    QToolButton *m_browse;
    QAction *m_lock = nullptr; ///< made for the first copy
    QString m_copy;            ///< what the line shows as `m_origin`; empty while it shows a path
    QString m_origin;
    PathOffer *m_offer = nullptr; ///< of the line; null before a letter is typed, and with recent paths
};

} // namespace velmora
