#pragma once

#include "filetypes/table/column_choices.h"

#include <QStringList>
#include <QToolBar>

class QCheckBox;
class QComboBox;

namespace velmora {

/// What a table comparison goes by: delimiter, header and key, behind the commands or below them.
class TableInputsBar final : public QToolBar {
    Q_OBJECT
public:
    explicit TableInputsBar(QWidget *parent = nullptr);

    [[nodiscard]] QChar delimiter() const;
    /// Chooses a delimiter that is offered; another one changes nothing.
    void setDelimiter(QChar delimiter);
    /// How an offered delimiter is called.
    [[nodiscard]] QString delimiterName(QChar delimiter) const;
    [[nodiscard]] bool hasHeader() const;
    void setHasHeader(bool hasHeader);
    /// The chosen key columns; one that was chosen here, or offered without a name, has none.
    [[nodiscard]] QList<ColumnRef> keys() const;
    /// How they are called, also where they have no name.
    [[nodiscard]] QStringList keyNames() const;
    /// Chooses columns, also ones that are not offered.
    void setKeys(const QList<ColumnRef> &keys);
    /// Offers these columns as keys, by their number; what was chosen stays chosen if it is still there. Columns that
    /// were chosen by name become those of `found`, where they were looked for.
    void offerKeys(const QStringList &names, const QList<ColumnRef> &found);

private:
    void addLabel(const QString &text, QWidget *buddy);

    QComboBox *m_delimiter;
    QCheckBox *m_header;
    QComboBox *m_key;
    QList<ColumnRef> m_several; ///< what the entry for several columns stands for
};

} // namespace velmora
