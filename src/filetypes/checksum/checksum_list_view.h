#pragma once

#include "filetypes/checksum/checksum_rows.h"
#include "session/list/list_bar.h"
#include "session/list/list_pane.h"

namespace velmora {

/// A checked list: its bar of commands and its rows.
class ChecksumListView final : public QWidget {
    Q_OBJECT
public:
    explicit ChecksumListView(QWidget *parent = nullptr);

    /// Shows the files, those that differ first in sight when there are some.
    void setCheck(const ChecksumCheck &check);
    void refreshTheme();

Q_SIGNALS:
    void told(const QString &message);

private:
    class Bar;

    Bar *m_bar;
    ListPane *m_pane;
};

} // namespace velmora
