#pragma once

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
    /// The chosen key column, from 0; -1 for none.
    [[nodiscard]] qint32 key() const;
    [[nodiscard]] QString keyName() const;
    void setKey(qint32 key);
    /// Offers these columns as keys, by their number; what was chosen stays chosen if it is still there.
    void offerKeys(const QStringList &names);
    /// Offers and chooses one column before the others are known.
    void offerKey(qint32 key, const QString &name);

private:
    void addLabel(const QString &text, QWidget *buddy);

    QComboBox *m_delimiter;
    QCheckBox *m_header;
    QComboBox *m_key;
};

} // namespace velmora
