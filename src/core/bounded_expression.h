#pragma once

#include <QRegularExpression>
#include <QString>

namespace velmora {

/// A regular expression that a person has written, made so that no line keeps it busy for long: where it would need
/// more than about a million steps it gives up, which takes some milliseconds. Then the match is neither found nor
/// valid (`QRegularExpressionMatch::isValid`). Everything else, what is wrong with an invalid expression too, is as in
/// `QRegularExpression(pattern, options)`, only that places in it count from the prefix that sets the limit.
[[nodiscard]] QRegularExpression
boundedExpression(const QString &pattern,
                  QRegularExpression::PatternOptions options = QRegularExpression::NoPatternOption);

} // namespace velmora
