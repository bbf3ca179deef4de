#include "session/frame/path_offer.h"

#include <QAbstractListModel>
#include <QApplication>
#include <QCompleter>
#include <QDir>
#include <QDirIterator>
#include <QLineEdit>
#include <QStringList>

namespace velmora {

namespace {

QStringList namesIn(const QString &folder, const CancelFlag &cancel)
{
    // Nobody looks through more; the list is searched with every letter.
    constexpr qsizetype mostOffered = 20'000;
    QStringList names;
    QDirIterator entries(folder, QDir::AllEntries | QDir::NoDotAndDotDot | QDir::Hidden);
    while (entries.hasNext() && names.size() < mostOffered && !cancel.isCancelled()) {
        entries.next();
        names.append(entries.fileName());
    }
    names.sort(Qt::CaseInsensitive);
    return names;
}

/// Up to the last separator; empty for what is no path of this system, or that of a host, which may not answer.
QString folderOf(const QString &typed)
{
    const QString path = QDir::fromNativeSeparators(typed);
    if (!QDir::isAbsolutePath(path) || path.startsWith(QLatin1String("//")))
        return {};
    return typed.first(path.lastIndexOf(u'/') + 1);
}

} // namespace

/// Shows names; what they complete is the path as far as it was typed, with the separators that were typed.
class PathOffer::Entries final : public QAbstractListModel {
public:
    using QAbstractListModel::QAbstractListModel;

    void set(const QString &folder, const QStringList &names)
    {
        beginResetModel();
        m_folder = folder;
        m_names = names;
        endResetModel();
    }

    [[nodiscard]] int rowCount(const QModelIndex &parent) const override
    {
        return parent.isValid() ? 0 : int(m_names.size());
    }
    [[nodiscard]] QVariant data(const QModelIndex &index, int role) const override
    {
        if (role == Qt::DisplayRole)
            return m_names.at(index.row());
        return role == Qt::EditRole ? QVariant(m_folder + m_names.at(index.row())) : QVariant();
    }

private:
    QString m_folder;
    QStringList m_names;
};

PathOffer::PathOffer(QLineEdit &line)
    : QObject(&line), m_line(line), m_entries(new Entries(this)), m_completer(new QCompleter(m_entries, this))
{
    m_completer->setCaseSensitivity(Qt::CaseInsensitive);
    m_line.setCompleter(m_completer);
}

void PathOffer::pathTyped()
{
    const QString folder = folderOf(m_line.text());
    if (folder == m_folder)
        return;
    m_folder = folder;
    m_entries->set({}, {});
    if (folder.isEmpty()) {
        m_runner.abandon();
        return;
    }
    m_runner.start([folder](const CancelFlag &cancel,
                            Progress & /*progress*/) { return namesIn(QDir::fromNativeSeparators(folder), cancel); },
                   [this, folder](RunOutcome<QStringList> &&outcome) {
                       m_entries->set(folder, outcome.value.value_or(QStringList()));
                       offer();
                   });
}

void PathOffer::offer()
{
    const QString typed = m_line.text();
    if (!m_line.hasFocus() || QApplication::activePopupWidget() || folderOf(typed) != m_folder)
        return;
    m_completer->setCompletionPrefix(typed);
    if (m_completer->completionCount() > 0)
        m_completer->complete();
}

} // namespace velmora
