#pragma once

#include "session/session_record.h"

#include <QList>
#include <QObject>

namespace velmora {

/// The sessions of late, kept in the interface's settings without being asked.
///
/// Oldest first, at most `limit`. Every change is stored at once, unless a `Batch` lives. Options are not kept.
class SessionHistory final : public QObject {
    Q_OBJECT
public:
    static constexpr qsizetype limit = 100;

    /// A record under a number that stays its own while the program runs.
    struct Entry {
        quint64 id = 0;
        SessionRecord record;
    };

    /// Puts off storing, and the signal, until the last of its kind is gone: for many changes in a row.
    class Batch final {
    public:
        explicit Batch(SessionHistory &history) : m_history(history) { ++m_history.m_batches; }
        ~Batch();
        Batch(const Batch &) = delete;
        Batch &operator=(const Batch &) = delete;

    private:
        SessionHistory &m_history;
    };

    /// Loads what is stored; settings that make no sense give an empty history.
    explicit SessionHistory(QObject *parent = nullptr);

    [[nodiscard]] const QList<Entry> &entries() const noexcept { return m_entries; }
    [[nodiscard]] QList<SessionRecord> records() const;
    /// Null when there is no such entry any more.
    [[nodiscard]] const Entry *find(quint64 id) const;

    /// Appends a session as of now, unless the newest entry is of the same type and paths, with or without a separator
    /// behind a path; the oldest give way.
    void add(const QString &type, const QString &name, const SessionPaths &paths);
    void replace(quint64 id, const SessionRecord &record);
    void remove(quint64 id);
    void replaceAll(const QList<SessionRecord> &records);

Q_SIGNALS:
    void changed();

private:
    void append(const SessionRecord &record);
    void store();
    void write();

    QList<Entry> m_entries;
    quint64 m_lastId = 0;
    int m_batches = 0;
    bool m_changedInBatch = false;
};

} // namespace velmora
