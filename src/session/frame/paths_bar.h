#pragma once

#include "session/session_record.h"

#include <QList>
#include <QWidget>

class QGridLayout;

namespace velmora {

class PathEdit;

/// The inputs of a session that are files: a labelled path with its browse button for each, one below the other.
class PathsBar final : public QWidget {
    Q_OBJECT
public:
    /// Texts are translated.
    struct Field {
        QString SessionPaths::*member = nullptr; ///< what of the session's paths it holds
        QString label;
        QString placeholder;
        QString browseTitle; ///< of the file dialog, and the button's tool tip
    };

    explicit PathsBar(const QList<Field> &fields, QWidget *parent = nullptr);

    [[nodiscard]] SessionPaths paths() const;
    /// Fills the fields; starts nothing.
    void setPaths(const SessionPaths &paths);

    /// Fills the fields with paths that were dropped: several from the first field on, a single one where `position`,
    /// in the bar's coordinates, is, or into the first field when that is none.
    void take(const QStringList &dropped, QPoint position);

    /// The grid of labels and paths, for what a session puts above them: row 0 is free.
    [[nodiscard]] QGridLayout &grid() { return *m_grid; }

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    /// A person has chosen a file, or pressed Return in a path.
    void submitted();

private:
    struct Row {
        QString SessionPaths::*member;
        PathEdit *edit;
    };

    void addField(const Field &field);

    QGridLayout *m_grid;
    QList<Row> m_rows;
};

} // namespace velmora
