#pragma once

#include "settings/options/text_session_options.h"
#include "text/engine/line_diff_engine.h"
#include "text/engine/sequence_matcher.h"

#include <QList>
#include <QString>
#include <QStringList>

#include <vector>

/// The line diff engine in its plainest form: slow, short, and the judge of the fast one.
namespace velmora::plain {

/// The longest common subsequence from the full table of lengths.
std::vector<MatchPair> tableMatch(const std::vector<qint32> &a, const std::vector<qint32> &b);

/// The longest common block, then the same before and after it.
std::vector<MatchPair> blockMatch(const std::vector<qint32> &a, const std::vector<qint32> &b);

/// Either of the two, by the product of the lengths.
std::vector<MatchPair> match(const std::vector<qint32> &a, const std::vector<qint32> &b, qint64 tableLimit);

double similarity(const QString &left, const QString &right);

/// The key of a line that is not unimportant.
QString key(QString line, const TextSessionOptions &options);

bool unimportant(const QString &line, const TextSessionOptions &options);

QList<DiffLine> aligned(const QStringList &left, const QStringList &right, const AlignParams &params,
                        qint64 tableLimit = 400000);

QList<DiffLine> byIndex(const QStringList &left, const QStringList &right);

QList<DiffLine> compare(const QStringList &left, const QStringList &right, const TextSessionOptions &options,
                        qint64 tableLimit = 400000);

QList<CharRange> intraLine(const QString &a, const QString &b, qint64 tableLimit = 200000);

} // namespace velmora::plain
