#include "system/snapshot_side.h"

#include "session/translate.h"

#include <QDir>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

namespace velmora {

namespace {

QToolButton *buttonFor(QAction *action, Qt::ToolButtonStyle style, QWidget *parent)
{
    auto *button = new QToolButton(parent);
    button->setDefaultAction(action);
    button->setToolButtonStyle(style);
    button->setIconSize(QSize(20, 20));
    button->setFocusPolicy(Qt::TabFocus);
    button->setObjectName(action->objectName() + QStringLiteral("Button"));
    button->setAccessibleName(action->toolTip());
    return button;
}

} // namespace

SnapshotSide::SnapshotSide(const SnapshotKind &kind, bool left, const SnapshotBar::SideActions &actions,
                           QGridLayout &grid, int row, QWidget *session)
    : QObject(session),
      m_live(QLatin1String(kind.liveText)),
      m_shownLive(Velmora::tr(kind.liveText)),
      m_emptyIsLive(kind.emptyIsLive),
      m_session(session),
      m_field(new QLineEdit(session))
{
    auto *label = new QLabel(Velmora::tr(left ? kind.leftLabel : kind.rightLabel), session);
    label->setBuddy(m_field);
    m_field->setObjectName(left ? QStringLiteral("leftSnapshot") : QStringLiteral("rightSnapshot"));
    m_field->setAccessibleName(label->text());
    m_field->setClearButtonEnabled(true);
    m_field->setAcceptDrops(false); // drops are for the session
    if (kind.placeholder)
        m_field->setPlaceholderText(Velmora::tr(kind.placeholder));

    int column = 0;
    grid.addWidget(label, row, column++);
    grid.addWidget(m_field, row, column++);
    grid.addWidget(buttonFor(actions.capture, Qt::ToolButtonTextBesideIcon, session), row, column++);
    grid.addWidget(buttonFor(actions.load, Qt::ToolButtonIconOnly, session), row, column++);
    grid.addWidget(buttonFor(actions.save, Qt::ToolButtonIconOnly, session), row, column++);

    connect(m_field, &QLineEdit::textChanged, this, [this] {
        m_field->setToolTip(m_field->text());
        Q_EMIT edited();
    });
    connect(m_field, &QLineEdit::returnPressed, this, &SnapshotSide::submitted);
}

QString SnapshotSide::place() const
{
    QString text = m_field->text().trimmed();
    if (text == m_shownLive || text == m_live)
        return m_live;
    // Copied from a file manager, a path often comes in quotes.
    if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"'))
        text = text.mid(1, text.size() - 2);
    return QDir::fromNativeSeparators(text);
}

void SnapshotSide::setPlace(const QString &place)
{
    m_field->setText(place == m_live ? m_shownLive : QDir::toNativeSeparators(place));
    m_field->setCursorPosition(0);
}

SideOrder SnapshotSide::orderForCompare() const
{
    const QString here = place();
    if (here.isEmpty())
        return {SideOrder::Source::Capture, {}, {}};
    const SnapshotStamp now = SnapshotStamp::of(here);
    // A file that is gone by now, with the drive it was on perhaps, is still what was loaded from it.
    const bool isUpToDate = isLive() || !now.exists() || now == m_stamp;
    if (holdsSnapshot() && isUpToDate)
        return {SideOrder::Source::Keep, {}, *m_snapshot};
    return isLive() ? SideOrder{SideOrder::Source::Capture, {}, {}} : SideOrder{SideOrder::Source::Load, here, {}};
}

void SnapshotSide::take(const QString &place, const SideResult &result)
{
    m_snapshot = result.snapshot;
    m_snapshotPlace = place;
    m_stamp = result.stamp;
    setPlace(place);
    Q_EMIT edited();
}

void SnapshotSide::takeCompared(const SideResult &result)
{
    const bool wasKept = holdsSnapshot() && !result.stamp.exists();
    if (!result.snapshot || place().isEmpty() || wasKept)
        return;
    m_snapshot = result.snapshot;
    m_snapshotPlace = place();
    m_stamp = result.stamp;
    Q_EMIT edited();
}

bool SnapshotSide::isAt(QPoint point) const
{
    const int top = m_field->mapTo(m_session, QPoint()).y();
    return point.y() >= top && point.y() < top + m_field->height();
}

void SnapshotSide::setBusy(bool busy)
{
    m_field->setReadOnly(busy);
}

} // namespace velmora
