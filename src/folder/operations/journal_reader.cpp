#include "folder/operations/journal_lines.h"
#include "folder/operations/line_reader.h"

#include <QHash>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace velmora {

namespace {

constexpr qsizetype mostRoots = 64;

QString unescaped(const QString &text)
{
    QString result;
    result.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        bool ok = false;
        const uint unit = text[i] == u'%' ? QStringView(text).mid(i + 1, 4).toUInt(&ok, 16) : 0;
        result.append(ok ? QChar(char16_t(unit)) : text[i]);
        i += ok ? 4 : 0;
    }
    return result;
}

/// Reads the fields of one object and remembers whether all were as they should be.
class Fields {
public:
    explicit Fields(const QJsonObject &object) : m_object(object) {}

    [[nodiscard]] bool isValid() const { return m_valid; }
    [[nodiscard]] bool has(const char *key) const { return m_object.contains(QLatin1String(key)); }

    qint64 number(const char *key, qint64 smallest, qint64 largest)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        const qint64 number = value.toInteger(smallest - 1);
        m_valid = m_valid && value.isDouble() && number >= smallest && number <= largest;
        return m_valid ? number : smallest;
    }

    QString text(const char *key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        m_valid = m_valid && (value.isString() || value.isUndefined());
        return unescaped(value.toString());
    }

    template <typename Number>
    Number longNumber(const char *key)
    {
        bool ok = false;
        const QString digits = m_object.value(QLatin1String(key)).toString();
        Number number = 0;
        if constexpr (std::is_signed_v<Number>)
            number = digits.toLongLong(&ok);
        else
            number = digits.toULongLong(&ok);
        m_valid = m_valid && ok;
        return number;
    }

    /// A missing one is no place.
    Place place(const char *key, qsizetype roots)
    {
        if (!has(key))
            return {};
        const QJsonArray parts = m_object.value(QLatin1String(key)).toArray();
        const Place place{parts.size() == 2 ? parts[0].toInt(-1) : -1,
                          parts.size() == 2 ? unescaped(parts[1].toString()) : QString()};
        m_valid = m_valid && place.root >= 0 && place.root < roots && isCleanRelative(place.relative);
        return place;
    }

    SeenEntry state(const char *key)
    {
        SeenEntry seen;
        Fields fields(m_object.value(QLatin1String(key)).toObject());
        seen.state = SeenEntry::State(fields.number("state", 0, int(SeenEntry::State::Exact)));
        if (seen.isPresent()) {
            seen.kind = NodeKind(fields.number("kind", 0, int(NodeKind::Special)));
            seen.size = fields.longNumber<qint64>("size");
            seen.modifiedNs = fields.longNumber<qint64>("time");
            if (fields.has("files"))
                seen.files = fields.longNumber<qint64>("files");
            if (fields.has("volume"))
                seen.identity =
                    FileIdentity{fields.longNumber<quint64>("volume"), fields.longNumber<quint64>("number")};
            if (fields.has("contents"))
                seen.contents = fields.longNumber<quint64>("contents");
        }
        m_valid = m_valid && fields.isValid();
        return seen;
    }

    bool flag(const char *key)
    {
        const QJsonValue value = m_object.value(QLatin1String(key));
        m_valid = m_valid && (value.isBool() || value.isUndefined());
        return value.toBool();
    }

    QStringList texts(const char *key)
    {
        QStringList list;
        const QJsonArray array = m_object.value(QLatin1String(key)).toArray();
        for (const QJsonValue &value : array) {
            m_valid = m_valid && value.isString();
            list.append(unescaped(value.toString()));
        }
        return list;
    }

private:
    QJsonObject m_object;
    bool m_valid = true;
};

/// A name in the folder "kept", which the journal itself gives as a plain number.
bool isKeptName(const QString &name)
{
    return name.size() <= 12 && std::all_of(name.begin(), name.end(), [](QChar c) { return c >= u'0' && c <= u'9'; });
}

class JournalReader {
public:
    bool take(const QJsonObject &object)
    {
        Fields fields(object);
        if (fields.has("plan"))
            return plan(fields);
        if (fields.has("step"))
            return begin(fields);
        if (fields.has("copying"))
            return copying(fields);
        const bool isMoved = fields.has("moved");
        const bool isRecycling = fields.has("recycling");
        JournalStep *const step = find(fields, isMoved ? "moved" : isRecycling ? "recycling" : "ended");
        if (!step)
            return false;
        if (isMoved)
            step->isMoved = !fields.flag("stays");
        else if (isRecycling)
            step->binPath = fields.text("bin");
        else
            end(*step, fields);
        return fields.isValid();
    }

    JournalRecord record;

private:
    static void end(JournalStep &step, Fields &fields)
    {
        if (fields.flag("doubtful")) {
            step.end = JournalStep::End::Open;
            return;
        }
        step.end = fields.flag("done") ? JournalStep::End::Done : JournalStep::End::Nothing;
        step.binPath = fields.text("bin");
        if (fields.has("now"))
            step.now = fields.state("now");
    }

    OperationStep operation(Fields &fields) const
    {
        const qsizetype roots = record.header.roots.size();
        OperationStep step;
        step.kind = OperationKind(fields.number("kind", 0, int(OperationKind::Restore)));
        step.from = fields.place("from", roots);
        step.to = fields.place("to", roots);
        step.counterpart = fields.place("counterpart", roots);
        step.keptCopy = fields.place("keptCopy", roots);
        if (step.keptCopy->isSet())
            step.keptCopySeen = fields.state("keptCopySeen");
        step.fromSeen = fields.state("fromSeen");
        step.toSeen = fields.state("toSeen");
        step.binPath = fields.text("bin");
        step.wholeTree = fields.flag("wholeTree");
        return step;
    }

    /// Planned steps stand in their order before the first that was begun.
    bool plan(Fields &fields)
    {
        const auto next = qint64(record.planned.size());
        record.planned.push_back(operation(fields));
        return fields.number("plan", 0, std::numeric_limits<int>::max()) == next && fields.isValid() &&
               record.steps.empty();
    }

    bool copying(Fields &fields)
    {
        record.lastCopy = fields.place("copying", record.header.roots.size());
        record.lastCopyStep = -1;
        return record.lastCopy.isSet() && fields.isValid();
    }

    bool begin(Fields &fields)
    {
        JournalStep step;
        step.number = fields.number("step", 0, std::numeric_limits<int>::max());
        if (std::size_t(step.number) < record.planned.size()) {
            step.step = record.planned[std::size_t(step.number)];
            if (fields.has("kind"))
                step.step.kind = OperationKind(fields.number("kind", 0, int(OperationKind::Restore)));
        } else {
            step.step = operation(fields);
        }
        step.kept = fields.text("kept");
        step.isLost = fields.flag("lost");
        const auto earlier = m_index.constFind(step.number); // a second try is another way to do the same
        const bool isNew = earlier == m_index.constEnd() || record.steps[*earlier].end == JournalStep::End::Nothing;
        if (!fields.isValid() || !isKeptName(step.kept) || !isNew)
            return false;
        m_index.insert(step.number, record.steps.size());
        if (record.lastCopyStep < 0)
            record.lastCopyStep = std::ptrdiff_t(record.steps.size());
        record.steps.push_back(step);
        return true;
    }

    JournalStep *find(Fields &fields, const char *key)
    {
        const qint64 number = fields.number(key, 0, std::numeric_limits<int>::max());
        const auto found = m_index.constFind(number);
        return fields.isValid() && found != m_index.constEnd() ? &record.steps[*found] : nullptr;
    }

    QHash<qint64, std::size_t> m_index;
};

} // namespace

std::optional<JournalHeader> readHeaderLine(const QByteArray &line)
{
    const QJsonObject object = QJsonDocument::fromJson(line).object();
    Fields fields(object);
    if (object.value(QLatin1String("format")).toString() != QLatin1String(journalFormat))
        return std::nullopt;
    (void)fields.number("version", 1, journalVersion);
    JournalHeader header;
    header.title = fields.text("title");
    header.startedMs = fields.number("started", 0, qint64(1) << 52U);
    header.undoOf = fields.text("undoOf");
    header.roots = fields.texts("roots");
    header.rootNumbers = fields.texts("rootNumbers");
    if (fields.has("steps")) // not in the first version
        header.steps = fields.number("steps", 0, std::numeric_limits<int>::max());
    const bool knowsNumbers = header.rootNumbers.isEmpty() || header.rootNumbers.size() == header.roots.size();
    if (!fields.isValid() || header.roots.isEmpty() || header.roots.size() > mostRoots || !knowsNumbers)
        return std::nullopt;
    return header;
}

std::optional<JournalRecord> readJournal(FileSource &source, const CancelFlag &cancel, FileError &error)
{
    LineReader lines(source);
    JournalReader reader;
    const std::optional<QByteArray> first = lines.next();
    const std::optional<JournalHeader> header = first ? readHeaderLine(*first) : std::nullopt;
    bool isUsable = header.has_value();
    if (isUsable)
        reader.record.header = *header;
    for (std::optional<QByteArray> line; isUsable && (line = lines.next());) {
        if (cancel.isCancelled()) {
            error = {FileErrorKind::Stopped, {}};
            return std::nullopt;
        }
        isUsable = reader.take(QJsonDocument::fromJson(*line).object());
    }
    if (lines.hasFailed())
        error = {FileErrorKind::ReadFailed, {}};
    return isUsable && !lines.hasFailed() && !lines.isTooLong() ? std::optional(std::move(reader.record))
                                                                : std::nullopt;
}

} // namespace velmora
