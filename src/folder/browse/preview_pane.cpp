#include "folder/browse/preview_pane.h"

#include "core/visible_name.h"
#include "folder/actions/action_words.h"
#include "folder/browse/archive_view_words.h"
#include "folder/browse/picture_view.h"
#include "session/frame/elided_label.h"
#include "session/frame/notice_card.h"
#include "session/pane/pane_view.h"
#include "session/pane/syntax_detection.h"
#include "session/pane/text_appearance.h"
#include "session/pane/text_pane.h"
#include "session/translate.h"
#include "text/syntax/syntax_definition.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QStackedWidget>

namespace velmora {

namespace {

constexpr int onlyPane = 0;

} // namespace

PreviewPane::PreviewPane(QWidget *parent)
    : QWidget(parent),
      m_head(new ElidedLabel),
      m_views(new QStackedWidget),
      m_text(new PaneView(1)),
      m_picture(new PictureView),
      m_blank(new QWidget),
      m_card(new NoticeCard(m_blank))
{
    constexpr int delayMs = 60;
    m_delay.setSingleShot(true);
    m_delay.setInterval(delayMs);
    connect(&m_delay, &QTimer::timeout, this, &PreviewPane::start);
    m_head->setObjectName(QStringLiteral("previewHead"));
    m_head->setMinimumHeight(QLineEdit().sizeHint().height()); // so that what is below stands beside the tree
    m_text->setObjectName(QStringLiteral("previewText"));
    m_text->arrangeInRow();
    m_text->scene().setShowsSyntax(true);
    m_text->pane(onlyPane).setAccessibleName(Velmora::tr("Preview"));
    const TextAppearance appearance = TextAppearance::load();
    m_text->setUsualFont(appearance.family, appearance.points);
    m_text->resetZoom();
    m_picture->setObjectName(QStringLiteral("previewPicture"));
    m_card->setObjectName(QStringLiteral("previewCard"));
    for (QWidget *view :
         {static_cast<QWidget *>(m_blank), static_cast<QWidget *>(m_text), static_cast<QWidget *>(m_picture)})
        m_views->addWidget(view);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(6);
    column->addWidget(m_head);
    column->addWidget(m_views, 1);
    setFocusProxy(m_text);
}

void PreviewPane::showRow(const SharedListing &listing, qint32 row)
{
    if (listing == m_listing && row == m_row)
        return;
    m_listing = listing;
    m_row = row;
    m_runner.abandon();
    m_delay.start();
}

void PreviewPane::start()
{
    if (!m_listing || m_row < 0) {
        tell({});
        return;
    }
    const ListedEntry listed = m_listing->row(m_row);
    const ArchiveNode &node = m_listing->node(m_row);
    const qint32 reached = listed.archive->tree().behind(listed.node);
    if (listed.isFolder) {
        tell(visibleName(node.name), folderFactsText(*m_listing, m_row));
        return;
    }
    const bool isFile = reached >= 0 && listed.archive->tree().node(reached).kind == ArchiveEntryKind::File;
    if (!isFile) {
        tell(visibleName(node.name), node.target.isEmpty() ? Velmora::tr("A pipe or device, which has no content")
                                                           : Velmora::tr("A link to %1").arg(visibleName(node.target)));
        return;
    }
    m_runner.start([listing = m_listing, archive = listed.archive, entry = listed.archive->tree().node(reached).entry](
                       const CancelFlag &cancel, Progress &) { return previewEntry(*archive, entry, cancel); },
                   [this](RunOutcome<EntryPreview> &&outcome) {
                       if (outcome.end == RunEnd::Done)
                           take(*outcome.value);
                       else if (outcome.end == RunEnd::Failed)
                           tell(visibleName(m_listing->node(m_row).name), Velmora::tr("Not enough memory"));
                   });
}

void PreviewPane::take(const EntryPreview &preview)
{
    const QString name = visibleName(m_listing->node(m_row).name);
    const ArchiveEntry *entry = m_listing->entry(m_row);
    switch (preview.kind) {
    case EntryPreview::Kind::Empty:
        tell(name, Velmora::tr("The file is empty"));
        break;
    case EntryPreview::Kind::Unreadable:
        if (entry && entry->isEncrypted && !m_listing->row(m_row).archive->parts().format.startsWith("ZIP"))
            m_card->tell({name, Velmora::tr("Encrypted in a way that cannot be read")});
        else if (entry && entry->isEncrypted)
            m_card->tell({name,
                          Velmora::tr("Encrypted, and not read without the password"),
                          {{Velmora::tr("Enter the password…"), [this] { Q_EMIT passwordWanted(); }}}});
        else
            m_card->tell({name, preview.error.isEmpty()
                                    ? Velmora::tr("Damaged: nothing of it can be read")
                                    : Velmora::tr("Damaged: nothing of it can be read (%1)").arg(preview.error)});
        m_head->clear();
        m_views->setCurrentWidget(m_blank);
        m_card->place();
        break;
    case EntryPreview::Kind::Picture:
        m_picture->setPicture(preview.picture);
        m_views->setCurrentWidget(m_picture);
        m_head->setText(factsOf(preview));
        break;
    default:
        showDocument(preview);
    }
}

void PreviewPane::showDocument(const EntryPreview &preview)
{
    m_text->scene().setDocument(preview.document);
    const bool isText = preview.kind == EntryPreview::Kind::Text;
    m_text->scene().colouring(onlyPane).setDefinition(
        isText ? detectSyntax(m_listing->node(m_row).name, preview.document->source(onlyPane)) : nullptr);
    m_views->setCurrentWidget(m_text);
    m_head->setText(factsOf(preview));
}

QString PreviewPane::factsOf(const EntryPreview &preview) const
{
    QStringList facts{visibleName(m_listing->node(m_row).name)};
    if (preview.kind == EntryPreview::Kind::Picture)
        facts.append(QStringLiteral("%1 × %2").arg(preview.pictureSize.width()).arg(preview.pictureSize.height()));
    if (!preview.encoding.isEmpty())
        facts.append(preview.encoding);
    if (preview.isDamaged)
        facts.append(Velmora::tr("damaged; only the first %1 can be read").arg(sizeText(preview.shown)));
    else if (!preview.isWhole)
        facts.append(Velmora::tr("the first %1").arg(sizeText(preview.shown)));
    return facts.join(totalsSeparator);
}

void PreviewPane::tell(const QString &title, const QString &text)
{
    m_head->clear();
    m_text->scene().setDocument(nullptr);
    if (title.isEmpty())
        m_card->clear();
    else
        m_card->tell({title, text});
    m_views->setCurrentWidget(m_blank);
    m_card->place();
}

void PreviewPane::refreshTheme()
{
    m_text->refreshTheme();
    m_card->refresh();
    m_picture->update();
}

void PreviewPane::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    m_card->place();
}

} // namespace velmora
