#pragma once

#include "core/runner.h"
#include "folder/browse/archive_rows.h"
#include "folder/browse/entry_preview.h"

#include <QTimer>
#include <QWidget>

class QStackedWidget;

namespace velmora {

class ElidedLabel;
class NoticeCard;
class PaneView;
class PictureView;

/// What is in the entry that is current in the tree: its text in colours, its picture, or its bytes. Reads on a worker;
/// what has been left meanwhile is dropped.
class PreviewPane final : public QWidget {
    Q_OBJECT
public:
    explicit PreviewPane(QWidget *parent = nullptr);

    /// Shows a row of the listing, soon; nothing for -1.
    void showRow(const SharedListing &listing, qint32 row);

    void refreshTheme();

Q_SIGNALS:
    /// The entry is encrypted, and the password is to be asked for.
    void passwordWanted();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    void start();
    void take(const EntryPreview &preview);
    void tell(const QString &title, const QString &text = {});
    void showDocument(const EntryPreview &preview);
    [[nodiscard]] QString factsOf(const EntryPreview &preview) const;

    ElidedLabel *m_head;
    QStackedWidget *m_views;
    PaneView *m_text;
    PictureView *m_picture;
    QWidget *m_blank;
    NoticeCard *m_card;
    SharedListing m_listing;
    qint32 m_row = -1;
    QTimer m_delay; ///< so that walking the tree reads nothing that is only passed
    Runner m_runner;
};

} // namespace velmora
