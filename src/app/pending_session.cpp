#include "app/pending_session.h"

#include "app/session_kinds.h"
#include "core/visible_name.h"
#include "session/session_host.h"
#include "session/translate.h"

#include <QDir>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace velmora {

namespace {

constexpr int iconSize = 96;
constexpr int textWidth = 460;

QLabel *centredLabel(const QString &text, qreal scale, QFont::Weight weight, QWidget *parent)
{
    auto *label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPointSizeF(font.pointSizeF() * scale);
    font.setWeight(weight);
    label->setFont(font);
    label->setAlignment(Qt::AlignCenter);
    label->setWordWrap(true);
    label->setFixedWidth(textWidth);
    return label;
}

} // namespace

PendingSession::PendingSession(SessionHost &host, const SessionKindRow &row, QWidget *parent)
    : SessionWidget(host, parent),
      m_row(row),
      m_icon(new QLabel(this)),
      m_inputs(centredLabel({}, 1.0, QFont::Normal, this)),
      m_instead(new QPushButton(this))
{
    m_icon->setAlignment(Qt::AlignCenter);
    auto *name = centredLabel(Velmora::tr(row.displayName), 1.9, QFont::DemiBold, this);
    auto *summary = centredLabel(Velmora::tr(row.summary), 1.15, QFont::Normal, this);
    auto *note = centredLabel(Velmora::tr("This session is not part of this version yet."), 1.0, QFont::Normal, this);
    note->setForegroundRole(QPalette::PlaceholderText);
    m_inputs->setTextFormat(Qt::PlainText);
    m_inputs->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_inputs->hide();
    m_instead->setObjectName(QStringLiteral("compareInstead"));
    m_instead->setText(row.filesOnly ? Velmora::tr("Compare as text") : Velmora::tr("Compare as folders"));
    m_instead->hide();
    connect(m_instead, &QAbstractButton::clicked, this, [this] {
        this->host().openSession(m_row.filesOnly ? QStringLiteral("text") : QStringLiteral("folder"),
                                 {.left = m_paths.left, .right = m_paths.right, .base = {}});
    });

    auto *column = new QVBoxLayout(this);
    column->setSpacing(10);
    column->addStretch(2);
    for (QWidget *part :
         {static_cast<QWidget *>(m_icon), static_cast<QWidget *>(name), static_cast<QWidget *>(summary),
          static_cast<QWidget *>(note), static_cast<QWidget *>(m_inputs), static_cast<QWidget *>(m_instead)})
        column->addWidget(part, 0, Qt::AlignHCenter);
    column->addStretch(3);
    refreshTheme();
}

QString PendingSession::kind() const
{
    return m_row.id;
}

void PendingSession::setPaths(const SessionPaths &paths)
{
    m_paths = paths;
    QStringList lines;
    for (const QString &path : {paths.base, paths.left, paths.right}) {
        if (!path.isEmpty())
            lines.append(visibleName(QDir::toNativeSeparators(path)));
    }
    m_inputs->setText(lines.join(u'\n'));
    m_inputs->setVisible(!lines.isEmpty());
    const bool isOfFolders = m_row.group == KindGroup::MergeAndSync;
    m_instead->setVisible((m_row.filesOnly || isOfFolders) && !paths.left.isEmpty() && !paths.right.isEmpty());
}

void PendingSession::refreshTheme()
{
    m_icon->setPixmap(sessionKindIcon(m_row.id).pixmap(QSize(iconSize, iconSize), devicePixelRatioF()));
}

} // namespace velmora
