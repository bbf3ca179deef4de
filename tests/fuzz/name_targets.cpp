#include "core/natural_order.h"
#include "core/visible_name.h"
#include "core/wildcard.h"
#include "filetypes/checksum/engine/checksum_list.h"
#include "fuzz/targets.h"

#include <QDir>
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

void checksumList(const QByteArray &input)
{
    const ChecksumList list = parseChecksumList(input);
    require((list.badLines > 0) == (list.firstBadLine > 0), "a bad line has a number");
    for (const ChecksumEntry &entry : list.entries) {
        require(entry.digest.size() == digestSize(entry.algorithm), "a digest is whole");
        if (const std::optional<QString> path = pathWithin(entry.name)) {
            const QString root = QDir::rootPath() + QStringLiteral("list/folder/");
            require(QDir::cleanPath(root + *path).startsWith(root), "no name leads out of the folder");
        }
        for (const ChecksumForm form : {ChecksumForm::Gnu, ChecksumForm::Bsd}) {
            if (!canHold(form, entry.algorithm))
                continue;
            const ChecksumList again = parseChecksumList(checksumLine(form, entry));
            require(again.entries.size() == 1 && again.badLines == 0 && again.entries.first().name == entry.name &&
                        again.entries.first().digest == entry.digest,
                    "an entry is read as it was written");
        }
    }
    (void)expectedChecksum(QString::fromUtf8(input));
}

} // namespace velmora::fuzz
