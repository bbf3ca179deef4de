#include "session/frame/path_edit.h"

#include "core/visible_name.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QBoxLayout>
#include <QCompleter>
#include <QDir>
#include <QFileInfo>
#include <QFileSystemModel>
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
    connect(m_line, &QLineEdit::editingFinished, this, &PathEdit::dropOffer);
    // An offer that opens while Tab is pressed keeps from the line that it has lost the focus.
    connect(qApp, &QApplication::focusChanged, this, [this](const QWidget *left) {
        if (left == m_line)
            dropOffer();
    });
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
    delete m_line->completer();
    delete std::exchange(m_files, nullptr);
    m_line->setCompleter(completer);
}

void PathEdit::offerFromDisk()
{
    const QString path = QDir::fromNativeSeparators(m_line->text());
    // A host that does not answer would hold up the window.
    if (!QDir::isAbsolutePath(path) || path.startsWith(QLatin1String("//")))
        return;
    if (!m_line->completer()) {
        // Made with the first letter that is typed: the model has a thread of its own, and most paths are never typed.
        m_files = new QFileSystemModel(this);
        m_files->setFilter(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
        m_files->setOption(QFileSystemModel::DontUseCustomDirectoryIcons);
        auto *completer = new QCompleter(m_files, this);
        m_line->setCompleter(completer);
    }
    if (m_files)
        m_files->setRootPath(
            QFileInfo(path).path()); // or nobody reads the folder: the completer only looks at what was read
}

void PathEdit::dropOffer()
{
    if (!m_files)
        return;
    // A folder that is read by now would be offered over the next field, and take what is typed there.
    QCompleter *const completer = m_line->completer();
    m_line->setCompleter(nullptr);
    disconnect(m_files, nullptr, completer, nullptr);
    completer->deleteLater();
    m_files->deleteLater();
    m_files = nullptr;
}

void PathEdit::refreshTheme()
{
    const QIcon icon = themedIcon(QStringLiteral("open.png"));
    m_browse->setIcon(icon);
    if (icon.availableSizes().isEmpty())
        m_browse->setText(QStringLiteral("..."));
}

} // namespace velmora
