#include "session/frame/path_edit.h"

#include "core/visible_name.h"
#include "session/frame/path_offer.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QCompleter>
#include <QDir>
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
    connect(m_line, &QLineEdit::textEdited, this, &PathEdit::offerFromDisk);
    connect(m_line, &QLineEdit::textEdited, this, &PathEdit::pathEdited);
    connect(m_line, &QLineEdit::returnPressed, this, &PathEdit::submitted);
    refreshTheme();
}

QString PathEdit::path() const
{
    QString text = m_line->text().trimmed();
    // Copied from a file manager, a path often comes in quotes.
    if (text.size() >= 2 && text.startsWith(u'"') && text.endsWith(u'"'))
        text = text.mid(1, text.size() - 2);
    return QDir::fromNativeSeparators(text);
}

void PathEdit::setPath(const QString &path)
{
    m_line->setText(QDir::toNativeSeparators(path));
    m_line->setToolTip(visibleName(m_line->text()));
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
        native.append(QDir::toNativeSeparators(path));
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
    if (icon.availableSizes().isEmpty())
        m_browse->setText(QStringLiteral("..."));
}

} // namespace velmora
