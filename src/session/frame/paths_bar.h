#pragma once

#include "session/session_record.h"

#include <QList>
#include <QWidget>

class QAction;
class QGridLayout;
class QLineEdit;

namespace velmora {

class PathEdit;

/// The inputs of a session: a labelled path with its browse button for each, one below the other, and what a session
/// puts behind them.
class PathsBar final : public QWidget {
    Q_OBJECT
public:
    /// Texts are translated.
    struct Field {
        enum class Picks : quint8 { File, Folder };

        QString SessionPaths::*member = nullptr; ///< what of the session's paths it holds
        QString label;
        QString placeholder;
        QString browseTitle = {};  ///< of the file dialog, and the button's tool tip; none without
        Picks picks = Picks::File; ///< what the dialog asks for
        QLineEdit *line = nullptr; ///< without a parent: the line itself; an ordinary one without
    };

    explicit PathsBar(const QList<Field> &fields, QWidget *parent = nullptr);

    [[nodiscard]] SessionPaths paths() const;
    /// Whether no field is empty.
    [[nodiscard]] bool isComplete() const;
    /// Fills the fields; starts nothing.
    void setPaths(const SessionPaths &paths);

    /// The field of that number, from 0 on.
    [[nodiscard]] PathEdit &edit(int field) { return *m_rows.at(field).edit; }
    /// Puts a button for a command at the end of a field's row, named after the action.
    void addBehind(int field, QAction *action, Qt::ToolButtonStyle style = Qt::ToolButtonIconOnly);
    /// The field in whose row a point of the bar is, -1 for none.
    [[nodiscard]] int fieldAt(QPoint position) const;

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
        int columns; ///< that are taken
    };

    void addField(const Field &field);

    QGridLayout *m_grid;
    QList<Row> m_rows;
};

} // namespace velmora
