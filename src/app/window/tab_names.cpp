#include "app/window/tab_names.h"

#include "core/visible_name.h"
#include "session/passing_copies.h"
#include "session/shown_path.h"

#include <QDir>
#include <QHash>
#include <QSet>

#include <algorithm>
#include <array>

namespace velmora {

namespace {

const QString partMark = QStringLiteral(" — ");
const QString sidesMark = QStringLiteral(" <-> ");

using Sides = std::array<QString, 3>; ///< base, left, right

/// Where a person would look for it, with "/".
QString placeOf(const QString &path)
{
    const QString origin = originOfCopy(path);
    return QDir::fromNativeSeparators(origin.isEmpty() ? path : origin);
}

Sides sidesOf(const SessionPaths &paths)
{
    return {placeOf(paths.base), placeOf(paths.left), placeOf(paths.right)};
}

/// The last `count` folders around the file or folder `path`; only the first of them where `isShort`.
QString tail(const QString &path, qsizetype count, bool isShort)
{
    const QStringList parts = path.split(u'/', Qt::SkipEmptyParts);
    const qsizetype folders = std::max<qsizetype>(parts.size() - 1, 0);
    const QStringList last = parts.mid(std::max<qsizetype>(folders - count, 0), std::min(count, folders));
    return isShort && last.size() > 1 ? last.first() + QStringLiteral("/…") : last.join(u'/');
}

/// The tails of those sides that differ within a group of sessions.
QStringList tails(const QList<Sides> &group, const std::array<bool, 3> &differs, qsizetype count, bool isShort)
{
    QStringList texts;
    for (const Sides &sides : group) {
        QStringList parts;
        for (std::size_t side = 0; side < sides.size(); ++side) {
            if (differs[side])
                parts.append(tail(sides[side], count, isShort));
        }
        texts.append(parts.join(sidesMark));
    }
    return texts;
}

/// The name of a title that has the same one for both sides.
QString nameOnce(const QString &title)
{
    const QString name = title.section(sidesMark, 0, 0);
    return title == name + sidesMark + name ? name : title;
}

qsizetype distinct(const QStringList &texts)
{
    return QSet<QString>(texts.begin(), texts.end()).size();
}

/// What tells the sessions of one title apart, for each; empty texts where nothing does.
QStringList tellApart(const QList<Sides> &group)
{
    std::array<bool, 3> differs{};
    qsizetype longest = 0;
    QStringList whole;
    for (const Sides &sides : group) {
        QStringList all;
        for (std::size_t side = 0; side < sides.size(); ++side) {
            differs[side] = differs[side] || sides[side] != group.first()[side];
            longest = std::max(longest, sides[side].count(u'/'));
            all.append(sides[side]);
        }
        whole.append(all.join(u'\n'));
    }
    const qsizetype wanted = distinct(whole);
    if (wanted < 2)
        return QStringList(group.size());
    for (qsizetype count = 1; count < longest; ++count) {
        for (const bool isShort : {true, false}) {
            QStringList texts = tails(group, differs, count, isShort);
            if (distinct(texts) == wanted)
                return texts;
        }
    }
    return tails(group, differs, longest, false);
}

} // namespace

QStringList tabTexts(const QList<NamedPaths> &sessions)
{
    QHash<QString, QList<qsizetype>> byTitle;
    for (qsizetype i = 0; i < sessions.size(); ++i)
        byTitle[sessions[i].title].append(i);
    QStringList texts;
    texts.resize(sessions.size());
    for (const QList<qsizetype> &same : std::as_const(byTitle)) {
        QList<Sides> group;
        for (const qsizetype i : same)
            group.append(sidesOf(sessions[i].paths));
        const QStringList parts = same.size() > 1 ? tellApart(group) : QStringList(1);
        for (qsizetype i = 0; i < same.size(); ++i) {
            const QString &title = sessions[same[i]].title;
            texts[same[i]] = visibleName(parts[i].isEmpty() ? title : nameOnce(title) + partMark + parts[i]);
        }
    }
    return texts;
}

QString partOf(const QString &tabText)
{
    const qsizetype at = tabText.lastIndexOf(partMark);
    return at < 0 ? QString() : tabText.mid(at);
}

QString sessionToolTip(const NamedPaths &session)
{
    return (QStringList(visibleName(session.title)) + shownPaths(session.paths)).join(u'\n');
}

QStringList shownPaths(const SessionPaths &paths)
{
    QStringList shown;
    for (const QString &path : sidesOf(paths)) {
        if (!path.isEmpty())
            shown.append(shownPath(path));
    }
    return shown;
}

} // namespace velmora
