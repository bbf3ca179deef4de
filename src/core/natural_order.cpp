#include "core/natural_order.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace velmora {

namespace {

/// The parts of a key, one after the other, without the key as a string.
///
/// A run of digits becomes "0", the number of its digits without leading zeros, and these digits: a longer number is a
/// larger one. No other part of a key is "0", so numbers meet other characters where "0" stands.
class KeyUnits {
public:
    explicit KeyUnits(QStringView name) : m_name(name) {}

    [[nodiscard]] bool atEnd() const { return m_at >= m_name.size() && !m_hasQueued && m_digits == 0; }

    [[nodiscard]] char16_t next()
    {
        if (std::exchange(m_hasQueued, false))
            return m_queued;
        if (m_digits > 0) {
            --m_digits;
            return char16_t(u'0' + digitAt(m_at++));
        }
        if (m_name.at(m_at).isDigit())
            return beginNumber();
        return folded();
    }

private:
    [[nodiscard]] int digitAt(qsizetype at) const { return m_name.at(at).digitValue(); }

    [[nodiscard]] char16_t beginNumber()
    {
        while (m_at < m_name.size() && m_name.at(m_at).isDigit() && digitAt(m_at) == 0)
            ++m_at;
        qsizetype end = m_at;
        while (end < m_name.size() && m_name.at(end).isDigit())
            ++end;
        m_digits = end - m_at;
        queue(char16_t(std::min<qsizetype>(m_digits, std::numeric_limits<char16_t>::max())));
        return u'0';
    }

    [[nodiscard]] char16_t folded()
    {
        const QChar unit = m_name.at(m_at++);
        if (unit.unicode() < 0x80)
            return unit >= u'A' && unit <= u'Z' ? char16_t(unit.unicode() + 32) : unit.unicode();
        if (!unit.isHighSurrogate() || m_at == m_name.size() || !m_name.at(m_at).isLowSurrogate())
            return unit.toCaseFolded().unicode();
        const char32_t point = QChar::toCaseFolded(QChar::surrogateToUcs4(unit, m_name.at(m_at++)));
        queue(QChar::lowSurrogate(point));
        return QChar::highSurrogate(point);
    }

    void queue(char16_t unit)
    {
        m_queued = unit;
        m_hasQueued = true;
    }

    QStringView m_name;
    qsizetype m_at = 0;
    qsizetype m_digits = 0; ///< of the number that is being given out
    char16_t m_queued = 0;  ///< the unit that comes next, where one step gave two
    bool m_hasQueued = false;
};

} // namespace

QString naturalKey(QStringView name)
{
    QString key;
    key.reserve(name.size() + 8);
    KeyUnits units(name);
    while (!units.atEnd())
        key.append(QChar(units.next()));
    return key;
}

int compareNatural(QStringView left, QStringView right)
{
    KeyUnits a(left);
    KeyUnits b(right);
    while (!a.atEnd() && !b.atEnd()) {
        const int difference = int(a.next()) - int(b.next());
        if (difference != 0)
            return difference;
    }
    if (a.atEnd() != b.atEnd())
        return a.atEnd() ? -1 : 1;
    return left.compare(right);
}

} // namespace velmora
