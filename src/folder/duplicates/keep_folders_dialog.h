#pragma once

#include <QDialog>
#include <QStringList>

class QListWidget;
class QPushButton;

namespace velmora {

/// Asks for folders whose copies stay. Folders can be dropped on it. Opened with open(); the choice counts when
/// `accepted` comes.
class KeepFoldersDialog final : public QDialog {
    Q_OBJECT
public:
    /// `folders`: those in the list at first, absolute; `start`: where choosing another one begins.
    KeepFoldersDialog(const QStringList &folders, const QString &start, QWidget *parent = nullptr);

    [[nodiscard]] QStringList folders() const { return m_folders; }

protected:
    void dragEnterEvent(QDragEnterEvent *event) override;
    void dropEvent(QDropEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    void chooseFolder();
    void add(const QString &folder);
    void removeSelected();
    void showState();

    QString m_start;
    QStringList m_folders; ///< in the order of the list
    QListWidget *m_list;
    QPushButton *m_remove;
};

} // namespace velmora
