#include "session/frame/path_edit.h"

#include "core/path_names.h"
#include "core/visible_name.h"
#include "session/frame/path_offer.h"
#include "session/passing_copies.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QAction>
#include <QBoxLayout>
#include <QCompleter>
#include <QToolButton>

#include <utility>

namespace velmora {

PathEdit::PathEdit(const QString &placeholder, const QString &browseHint, QWidget *parent, QLineEdit *line)
    : QWidget(parent), m_line(line ? line : new QLineEdit(this)), m_browse(new QToolButton(this))
{
    m_line->setPlaceholderText(placeholder);
    m_line->setAccessibleName(placeholder);
    m_line->setClearButtonEnabled(true);
    m_line->setAcceptDrops(line);
    m_browse->setObjectName(QStringLiteral("pathBrowseBtn"));
    m_browse->setToolTip(browseHint);
    m_browse->setAccessibleName(browseHint);
    m_browse->setFocusPolicy(Qt::TabFocus);
    m_browse->setVisible(!browseHint.isEmpty());

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(m_line, 1);
    row->addWidget(m_browse);
    setFocusProxy(m_line);

    connect(m_browse, &QToolButton::clicked, this, &PathEdit::browseRequested);
    connect(m_line, &QLineEdit::textEdited, this, &PathEdit::showLock);
    connect(m_line, &QLineEdit::textEdited, this, &PathEdit::offerFromDisk);
    connect(m_line, &QLineEdit::textEdited, this, &PathEdit::pathEdited);
    connect(m_line, &QLineEdit::returnPressed, this, &PathEdit::submitted);
    refreshTheme();
}

QString PathEdit::path() const
{
    if (!m_copy.isEmpty() && m_line->text() == m_origin)
        return m_copy;
    QString text = m_line->text().trimmed();
    // Copied from a file manager, a path often comes in quotes.
    if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"'))
        text = text.mid(1, text.size() - 2);
    return pathFromNative(text);
}

void PathEdit::setPath(const QString &path)
{
    const QString origin = originOfCopy(path);
    m_copy = origin.isEmpty() ? QString() : path;
    m_origin = origin;
    m_line->setText(m_copy.isEmpty() ? nativePath(path) : origin);
    m_line->setToolTip(visibleName(m_line->text()));
    showLock();
}

void PathEdit::showLock()
{
    const bool isCopy = !m_copy.isEmpty() && m_line->text() == m_origin;
    if (isCopy && !m_lock) {
        m_lock = m_line->addAction(themedIcon(QStringLiteral("lock.png")), QLineEdit::LeadingPosition);
        m_lock->setToolTip(Velmora::tr("A copy that cannot be changed here"));
    }
    if (m_lock)
        m_lock->setVisible(isCopy);
}

void PathEdit::setReadOnly(bool readOnly)
{
    m_line->setReadOnly(readOnly);
    m_line->setClearButtonEnabled(!readOnly);
}

void PathEdit::setRecentPaths(const QStringList &paths)
{
    QStringList native;
    for (const QString &path : paths)
        native.append(nativePath(path));
    auto *completer = new QCompleter(native, this);
    completer->setCaseSensitivity(Qt::CaseInsensitive);
    completer->setFilterMode(Qt::MatchContains);
    delete std::exchange(m_offer, nullptr); // with its completer
    delete m_line->completer();
    m_line->setCompleter(completer);
}

void PathEdit::offerFromDisk()
{
    // Made with the first letter that is typed: most paths are never typed.
    if (!m_line->completer())
        m_offer = new PathOffer(*m_line);
    if (m_offer)
        m_offer->pathTyped();
}

void PathEdit::refreshTheme()
{
    const QIcon icon = themedIcon(QStringLiteral("open.png"));
    m_browse->setIcon(icon);
    if (m_lock)
        m_lock->setIcon(themedIcon(QStringLiteral("lock.png")));
    if (icon.availableSizes().isEmpty())
        m_browse->setText(QStringLiteral("..."));
}

} // namespace velmora
