#pragma once

#include <QStringList>
#include <QWidget>

class QPlainTextEdit;
class QToolButton;

namespace velmora {

/// What a folder session has done, line by line, to be read, copied and saved. Keeps the last 5,000 lines.
class FolderLogPanel final : public QWidget {
    Q_OBJECT
public:
    explicit FolderLogPanel(QWidget *parent = nullptr);

    static constexpr int mostLines = 5000;

    void addLine(const QString &line) { addLines({line}); }
    /// Very many at once cost no more than those that are kept.
    void addLines(const QStringList &lines);
    [[nodiscard]] QString text() const;

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void closeWanted();

private:
    void save();

    QPlainTextEdit *m_text;
    QToolButton *m_copy;
    QToolButton *m_save;
    QToolButton *m_close;
};

} // namespace velmora
