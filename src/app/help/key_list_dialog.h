#pragma once

#include "app/help/key_list.h"

#include <QDialog>

class QLineEdit;
class QTreeWidget;

namespace velmora {

/// Shows the keys of all commands, to be searched by command or key.
class KeyListDialog final : public QDialog {
    Q_OBJECT
public:
    explicit KeyListDialog(const QList<KeyGroup> &groups, QWidget *parent = nullptr);

private:
    void showMatching(const QString &wanted);

    QLineEdit *m_wanted;
    QTreeWidget *m_list;
};

} // namespace velmora
