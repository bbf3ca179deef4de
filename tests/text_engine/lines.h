#pragma once

#include "core/text_lines.h"
#include "settings/options/text_session_options.h"
#include "text/engine/diff_line.h"
#include "text_engine/sequences.h"

#include <QByteArray>
#include <QList>
#include <QStringList>

namespace velmora::test {

/// A line of up to `pieces` words, runs of all kinds of white space, letters with and without case and wide characters.
QString randomLine(Random &random, qint32 pieces);
/// Up to `longest` such lines, of which some are equal and some nearly so. Some end in a carriage return.
QStringList randomLines(Random &random, qint32 longest);
/// `lines` with some changed in part, removed, added or moved.
QStringList editedLines(Random &random, const QStringList &lines, qint32 changes);
/// Any options that a comparison goes by.
TextSessionOptions randomOptions(Random &random);

/// The lines as a `TextLines` that has just these. Precondition: no line has a line feed or half a surrogate pair.
TextLines toTextLines(const QStringList &lines);

/// One line for each row: sign, both numbers, both texts.
QByteArray dump(const QList<DiffLine> &rows);
QByteArray dump(const QStringList &lines);

} // namespace velmora::test
