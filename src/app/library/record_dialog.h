#pragma once

#include "session/session_record.h"

#include <QDialog>

class QFormLayout;
class QLineEdit;

namespace velmora {

/// Shows the fields of a session record for a last look or for a change.
class RecordDialog final : public QDialog {
    Q_OBJECT
public:
    /// Before a session is saved: name, type and all paths. The type stays as it is.
    [[nodiscard]] static RecordDialog *forSaving(const SessionRecord &record, QWidget *parent);
    /// For a change of the name and of the paths that the record's kind has.
    [[nodiscard]] static RecordDialog *forEditing(const SessionRecord &record, QWidget *parent);

    /// The record with the texts of now, trimmed.
    [[nodiscard]] SessionRecord record() const;

private:
    RecordDialog(const SessionRecord &record, const QString &title, QWidget *parent);
    void finishLayout();

    SessionRecord m_record;
    QFormLayout *m_form;
    QLineEdit *m_name;
    QLineEdit *m_left;
    QLineEdit *m_right;
    QLineEdit *m_base;
};

} // namespace velmora
