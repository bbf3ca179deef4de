#include "app/library/session_history.h"

#include "core/settings_store.h"

#include <QDir>

namespace velmora {

namespace {

constexpr QLatin1String arrayKey("sessions");
constexpr QLatin1String nameKey("name");
constexpr QLatin1String typeKey("type");
constexpr QLatin1String leftKey("leftPath");
constexpr QLatin1String rightKey("rightPath");
constexpr QLatin1String baseKey("basePath");
constexpr QLatin1String timestampKey("timestamp");

/// A folder is the same with or without a separator behind its name.
QString withoutLastSeparator(const QString &path)
{
    QString result = path;
    while (result.size() > 1 && (result.endsWith(u'/') || result.endsWith(QDir::separator())))
        result.chop(1);
    return result;
}

bool areSame(const SessionPaths &one, const SessionPaths &other)
{
    const auto isSame = [](const QString &path, const QString &otherPath) {
        return withoutLastSeparator(path) == withoutLastSeparator(otherPath);
    };
    return isSame(one.left, other.left) && isSame(one.right, other.right) && isSame(one.base, other.base);
}

} // namespace

SessionHistory::SessionHistory(QObject *parent) : QObject(parent)
{
    InterfaceSettings settings;
    // The count is whatever stands in the file; the entries beyond the limit are never asked for.
    const int count = settings.beginReadArray(arrayKey);
    for (int i = std::max(0, count - static_cast<int>(limit)); i < count; ++i) {
        settings.setArrayIndex(i);
        SessionRecord record;
        record.name = settings.value(nameKey).toString();
        record.type = settings.value(typeKey).toString();
        record.paths.left = settings.value(leftKey).toString();
        record.paths.right = settings.value(rightKey).toString();
        record.paths.base = settings.value(baseKey).toString();
        record.timestamp = settings.value(timestampKey).toDateTime();
        if (!record.type.isEmpty())
            append(record);
    }
}

QList<SessionRecord> SessionHistory::records() const
{
    QList<SessionRecord> result;
    result.reserve(m_entries.size());
    for (const Entry &entry : m_entries)
        result.append(entry.record);
    return result;
}

const SessionHistory::Entry *SessionHistory::find(quint64 id) const
{
    const auto entry =
        std::find_if(m_entries.begin(), m_entries.end(), [id](const Entry &candidate) { return candidate.id == id; });
    return entry == m_entries.end() ? nullptr : &*entry;
}

void SessionHistory::add(const QString &type, const QString &name, const SessionPaths &paths)
{
    if (!m_entries.isEmpty() && m_entries.constLast().record.type == type &&
        areSame(m_entries.constLast().record.paths, paths))
        return;
    append({.name = name, .type = type, .paths = paths, .options = {}, .timestamp = QDateTime::currentDateTime()});
    store();
}

void SessionHistory::replace(quint64 id, const SessionRecord &record)
{
    for (Entry &entry : m_entries) {
        if (entry.id == id) {
            entry.record = record;
            store();
            return;
        }
    }
}

void SessionHistory::remove(quint64 id)
{
    if (m_entries.removeIf([id](const Entry &entry) { return entry.id == id; }) > 0)
        store();
}

void SessionHistory::replaceAll(const QList<SessionRecord> &records)
{
    m_entries.clear();
    for (const SessionRecord &record : records)
        append(record);
    store();
}

void SessionHistory::append(const SessionRecord &record)
{
    m_entries.append({++m_lastId, record});
    m_entries.last().record.options = {};
    if (m_entries.size() > limit)
        m_entries.remove(0, m_entries.size() - limit);
}

SessionHistory::Batch::~Batch()
{
    if (--m_history.m_batches == 0 && std::exchange(m_history.m_changedInBatch, false))
        m_history.store();
}

void SessionHistory::store()
{
    if (m_batches > 0) {
        m_changedInBatch = true;
        return;
    }
    write();
    Q_EMIT changed();
}

void SessionHistory::write()
{
    InterfaceSettings settings;
    // A shorter array would leave the old elements behind it in the store.
    settings.remove(arrayKey);
    settings.beginWriteArray(arrayKey, static_cast<int>(m_entries.size()));
    for (int i = 0; i < m_entries.size(); ++i) {
        const SessionRecord &record = m_entries[i].record;
        settings.setArrayIndex(i);
        settings.setValue(nameKey, record.name);
        settings.setValue(typeKey, record.type);
        settings.setValue(leftKey, record.paths.left);
        settings.setValue(rightKey, record.paths.right);
        settings.setValue(baseKey, record.paths.base);
        settings.setValue(timestampKey, record.timestamp);
    }
    settings.endArray();
}

} // namespace velmora
