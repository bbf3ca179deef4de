#include "core/natural_order.h"
#include "core/visible_name.h"
#include "core/wildcard.h"
#include "fuzz/targets.h"

#include <QRegularExpression>

namespace velmora::fuzz {

namespace {

/// Both parts of an input that a line feed divides, as texts of UTF-16 units, half characters included.
std::pair<QString, QString> twoTexts(const QByteArray &input)
{
    const QByteArray whole = input.first(input.size() / 2 * 2);
    const QString text(reinterpret_cast<const QChar *>(whole.constData()), whole.size() / 2);
    const qsizetype cut = text.indexOf(u'\n');
    return {text.left(cut), cut < 0 ? QString() : text.mid(cut + 1)};
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

} // namespace

void mask(const QByteArray &input)
{
    const auto [pattern, name] = twoTexts(input);
    const Wildcard mask = Wildcard::fromMask(pattern);
    const bool matches = mask.matches(name);
    require(mask.isValid() || !matches, "what is no mask matches nothing");
    require(mask.isValid() || pattern.contains(u'['), "only a list can be wrong");
    if (!pattern.contains(u'[') && !pattern.contains(u'/') && !name.contains(u'/') && pattern.size() < 50) {
        require(Wildcard::fromPattern(pattern.trimmed()).matches(name) == matches,
                "without a list a mask is a pattern");
        require(Wildcard::fromMask(u'*' + pattern.trimmed() + u'*').matches(name) || !matches,
                "stars match nothing, too");
    }
}

void name(const QByteArray &input)
{
    const auto [left, right] = twoTexts(input);
    const int order = compareNatural(left, right);
    require(sign(order) == -sign(compareNatural(right, left)), "two names have one order");
    require((order == 0) == (left == right), "only equal names are with each other");
    const QString leftKey = naturalKey(left);
    const QString rightKey = naturalKey(right);
    if (leftKey != rightKey)
        require((leftKey < rightKey) == (order < 0), "keys have the order of the names");
    require(!visibleName(left).contains(u'\n'), "a name is shown on one line");
}

} // namespace velmora::fuzz
