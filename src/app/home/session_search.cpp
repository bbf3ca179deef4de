#include "app/home/session_search.h"

#include "app/session_kinds.h"
#include "session/session_record.h"
#include "session/translate.h"

#include <QStringList>

namespace velmora {

namespace {

QString namesOf(const SessionKindRow &kind)
{
    return QStringList{kind.id, kind.alias, QString::fromUtf8(kind.displayName), Velmora::tr(kind.displayName)}.join(
        u' ');
}

} // namespace

bool containsWords(const QString &text, const QString &words)
{
    const QStringList all = words.simplified().split(u' ', Qt::SkipEmptyParts);
    return std::all_of(all.begin(), all.end(),
                       [&text](const QString &word) { return text.contains(word, Qt::CaseInsensitive); });
}

bool kindMatches(const SessionKindRow &kind, const QString &words)
{
    return containsWords(
        QStringList{namesOf(kind), QString::fromUtf8(kind.summary), Velmora::tr(kind.summary)}.join(u' '), words);
}

bool recordMatches(const SessionRecord &record, const QString &words)
{
    const SessionKindRow *kind = findSessionKind(record.type);
    return containsWords(QStringList{record.name, record.paths.base, record.paths.left, record.paths.right,
                                     kind ? namesOf(*kind) : record.type}
                             .join(u' '),
                         words);
}

} // namespace velmora
