#include "core/wildcard.h"

#include <QVarLengthArray>

namespace velmora {

namespace {

struct Point {
    char32_t plain;
    char32_t folded; ///< what case folding makes of it
};

using Points = QVarLengthArray<Point, 256>;

/// The code points of a name; a surrogate without a partner stands for itself.
Points pointsOf(QStringView text)
{
    Points points;
    points.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        char32_t point = text[i].unicode();
        if (text[i].isHighSurrogate() && i + 1 < text.size() && text[i + 1].isLowSurrogate()) {
            point = QChar::surrogateToUcs4(text[i], text[i + 1]);
            ++i;
        }
        points.append({point, QChar::toCaseFolded(point)});
    }
    return points;
}

} // namespace

char32_t Wildcard::elementOf(char32_t folded)
{
    return folded == U'*' ? anyRun : folded == U'?' ? anyOne : folded;
}

Wildcard Wildcard::fromPattern(QStringView pattern)
{
    Wildcard wildcard;
    for (const Point &point : pointsOf(pattern))
        wildcard.m_pattern.push_back(elementOf(point.folded));
    return wildcard;
}

Wildcard Wildcard::fromMask(const QString &mask)
{
    std::u32string points;
    for (const Point &point : pointsOf(QStringView(mask).trimmed()))
        points.push_back(point.plain);
    Wildcard wildcard;
    for (std::size_t at = 0; at < points.size();) {
        const char32_t point = points[at++];
        if (point != U'[') {
            wildcard.m_pattern.push_back(elementOf(QChar::toCaseFolded(point)));
            continue;
        }
        std::optional<MaskList> list = MaskList::read(points, at);
        if (!list) {
            wildcard.m_valid = false;
            break;
        }
        wildcard.m_pattern.push_back(firstList + char32_t(wildcard.m_lists.size()));
        wildcard.m_lists.push_back(std::move(*list));
    }
    return wildcard;
}

bool Wildcard::fits(char32_t element, char32_t plain, char32_t folded) const
{
    if (element >= firstList)
        return m_lists[element - firstList].contains(plain, folded);
    return element == anyOne || element == folded;
}

bool Wildcard::matches(QStringView name) const
{
    if (!m_valid)
        return false;
    // When a character does not fit, only the last run before it needs to take one character more: a fit of what stands
    // before that run is as good as any other.
    const Points points = pointsOf(name);
    std::size_t at = 0;
    std::size_t retryPattern = std::u32string::npos;
    qsizetype retryName = 0;
    qsizetype i = 0;
    while (i < points.size()) {
        const bool more = at < m_pattern.size();
        if (more && m_pattern[at] == anyRun) {
            retryPattern = ++at;
            retryName = i;
        } else if (more && fits(m_pattern[at], points[i].plain, points[i].folded)) {
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
