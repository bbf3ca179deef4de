#include "core/wildcard.h"

#include <QVarLengthArray>

namespace velmora {

namespace {

using Points = QVarLengthArray<char32_t, 256>;

/// The case-folded code points of a name; a surrogate without a partner stands for itself.
Points foldedPoints(QStringView text)
{
    Points points;
    points.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t point = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            point = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        points.append(QChar::toCaseFolded(point));
    }
    return points;
}

} // namespace

Wildcard Wildcard::fromPattern(QStringView pattern)
{
    Wildcard wildcard;
    for (const char32_t point : foldedPoints(pattern)) {
        if (point == U'*')
            wildcard.m_pattern.push_back(anyRun);
        else if (point == U'?')
            wildcard.m_pattern.push_back(anyOne);
        else
            wildcard.m_pattern.push_back(point);
    }
    return wildcard;
}

Wildcard Wildcard::fromMask(const QString &mask)
{
    const QString trimmed = mask.trimmed();
    if (!trimmed.contains(u'['))
        return fromPattern(trimmed);
    Wildcard wildcard;
    wildcard.m_hasClasses = true;
    wildcard.m_classes = QRegularExpression(QRegularExpression::wildcardToRegularExpression(trimmed),
                                            QRegularExpression::CaseInsensitiveOption);
    return wildcard;
}

bool Wildcard::matches(QStringView name) const
{
    if (m_hasClasses)
        return m_classes.isValid() &&
               m_classes.match(QString::fromUtf8(name.toUtf8())).hasMatch(); // the library takes no lone surrogate

    // When a character does not fit, only the last run before it needs to take one character more: a fit of what stands
    // before that run is as good as any other.
    const Points points = foldedPoints(name);
    std::size_t at = 0;
    std::size_t retryPattern = std::u32string::npos;
    qsizetype retryName = 0;
    qsizetype i = 0;
    while (i < points.size()) {
        const bool more = at < m_pattern.size();
        if (more && m_pattern[at] == anyRun) {
            retryPattern = ++at;
            retryName = i;
        } else if (more && (m_pattern[at] == anyOne || m_pattern[at] == points[i])) {
            ++at;
            ++i;
        } else if (retryPattern != std::u32string::npos) {
            at = retryPattern;
            i = ++retryName;
        } else {
            return false;
        }
    }
    return m_pattern.find_first_not_of(anyRun, at) == std::u32string::npos;
}

WildcardList::WildcardList(const QStringList &masks)
{
    m_masks.reserve(masks.size());
    for (const QString &mask : masks)
        m_masks.append(Wildcard::fromMask(mask));
}

bool WildcardList::matches(QStringView name) const
{
    return std::any_of(m_masks.begin(), m_masks.end(), [name](const Wildcard &mask) { return mask.matches(name); });
}

QStringList splitMasks(QStringView text)
{
    QStringList masks;
    for (const QStringView part : text.split(u';')) {
        const QStringView mask = part.trimmed();
        if (!mask.isEmpty())
            masks.append(mask.toString());
    }
    return masks;
}

} // namespace velmora
