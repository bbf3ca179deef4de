#pragma once

#include <QList>
#include <QString>
#include <QWidget>

class QComboBox;
class QVBoxLayout;

namespace velmora {

/// A folder that is scanned beside the first one.
struct MoreFolder {
    QString path;
    bool isReference = false;

    friend bool operator==(const MoreFolder &, const MoreFolder &) = default;
};

/// The further folders of a scan, a row for each: its path, what it is there for, and a button that takes it out.
/// Hidden while there are none.
class MoreFolders final : public QWidget {
    Q_OBJECT
public:
    explicit MoreFolders(QWidget *parent = nullptr);

    /// What a journal can hold of roots, with room for the first folder.
    static constexpr qsizetype most = 60;

    [[nodiscard]] QList<MoreFolder> folders() const;
    void setFolders(const QList<MoreFolder> &folders);
    /// Does nothing for one that is there, or beyond the limit.
    void add(const MoreFolder &folder);

private:
    struct Row {
        QWidget *widget;
        QString path;
        QComboBox *role;
    };

    void remove(const QWidget *widget);

    QList<Row> m_rows;
    QVBoxLayout *m_column;
};

} // namespace velmora
