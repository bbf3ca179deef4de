#include "filetypes/registry/registry_words.h"

#include "filetypes/registry/engine/registry_text.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>

#include <array>

namespace velmora {

namespace {

QString number(qsizetype value)
{
    return QLocale().toString(qint64(value));
}

} // namespace

QString rowName(const RegistryComparison &comparison, const RegistryRow &row, QStringView below)
{
    QString path = comparison.path(row).mid(below.size());
    if (!below.isEmpty() && path.startsWith(u'\\'))
        path = path.mid(1);
    if (row.isKey())
        return u'[' + (path.isEmpty() ? comparison.path(row).section(u'\\', -1) : path) + u']';
    const QString name = comparison.name(row);
    const QString shown = name.isEmpty() ? Velmora::tr("(default)") : name;
    return path.isEmpty() ? shown : path + u'\\' + shown;
}

QString sideText(const RegistryComparison &comparison, const RegistryRow &row, Side side)
{
    if (row.keys[side] < 0)
        return {};
    if (row.isKey()) {
        const bool deletes = comparison.trees[side].keys[std::size_t(row.keys[side])].isDeletion;
        return deletes ? Velmora::tr("(deletes this key)") : Velmora::tr("(key)");
    }
    const RegistryValue *value = comparison.value(row, side);
    if (!value)
        return {};
    return value->isDeletion ? Velmora::tr("(deletes this value)") : valueText(*value);
}

QString typeText(const RegistryComparison &comparison, const RegistryRow &row)
{
    const RegistryValue *left = comparison.value(row, Side::Left);
    const RegistryValue *right = comparison.value(row, Side::Right);
    if (!left && !right)
        return {};
    const QString type = registryTypeName((left ? left : right)->type);
    return left && right && left->type != right->type ? type + QStringLiteral(" → ") + registryTypeName(right->type)
                                                      : type;
}

QString noteText(const RegistryComparison &comparison, const RegistryRow &row)
{
    QStringList parts{comparison.path(row), typeText(comparison, row)};
    const RegistryValue *left = comparison.value(row, Side::Left);
    const RegistryValue *right = comparison.value(row, Side::Right);
    if (row.status == PairStatus::Changed && left && right) {
        if (const std::optional<EntryChanges> changes = entryChanges(*left, *right)) {
            const bool isOrder = changes->added == 0 && changes->removed == 0;
            parts.append(isOrder ? Velmora::tr("the same entries in another order or letter case")
                                 : Velmora::tr("entries added: %1, removed: %2")
                                       .arg(number(changes->added), number(changes->removed)));
        }
    }
    if (row.isNoise)
        parts.append(Velmora::tr("noise"));
    parts.removeAll(QString());
    return parts.join(QStringLiteral("  \u00b7  "));
}

QString verdictText(const RegistryComparison &comparison)
{
    const qsizetype differences = comparison.counts.differences();
    QString text = differences == 0 ? Velmora::tr("Both sides hold the same keys and values.")
                                    : Velmora::tr("%1 of %2 keys and values differ.")
                                          .arg(number(differences), number(qsizetype(comparison.rows.size())));
    if (comparison.noise > 0)
        text += u' ' + Velmora::tr("%1 more differ and are taken for noise.").arg(number(comparison.noise));
    return text;
}

QString charsetText(const RegistryReading &reading, const QString &place)
{
    if (reading.charset.isEmpty())
        return {};
    return Velmora::tr("%1 is read as %2; \"Encoding\" has others.")
        .arg(shownPath(place), TextEncoding::ofCharset(reading.charset, false).name());
}

QStringList remarkTexts(const RegistryReading &reading, const QString &place)
{
    QStringList remarks;
    if (reading.badLines > 0 && reading.firstBadLine == 0)
        remarks.append(Velmora::tr("Keys in %1 that could not be read and are left out: %2.")
                           .arg(shownPath(place), number(reading.badLines)));
    else if (reading.badLines > 0)
        remarks.append(Velmora::tr("Lines of %1 that are no entries and were left out: %2, the first is line %3.")
                           .arg(shownPath(place), number(reading.badLines), number(reading.firstBadLine)));
    if (reading.mayBeCutOff)
        remarks.append(
            Velmora::tr("%1 does not end with an empty line, as exports do; it may be cut off.").arg(shownPath(place)));
    return remarks;
}

QString faultText(const RegistryReading &reading, const QString &place)
{
    switch (reading.fault) {
    case RegistryFault::CannotOpen:
        return Velmora::tr("Cannot open: %1").arg(shownPath(place));
    case RegistryFault::NotRegistry:
        return Velmora::tr("No file of registry entries: %1").arg(shownPath(place));
    case RegistryFault::CannotReadKey:
        return Velmora::tr("Cannot read this key of the registry: %1").arg(shownPath(place));
    case RegistryFault::None:
        break;
    }
    return {};
}

QString noiseText(NoiseKind kind)
{
    static constexpr std::array texts{QT_TRANSLATE_NOOP("Velmora", "Lists of what was used last"),
                                      QT_TRANSLATE_NOOP("Velmora", "Places and views of windows"),
                                      QT_TRANSLATE_NOOP("Velmora", "Counters and times of use"),
                                      QT_TRANSLATE_NOOP("Velmora", "Caches"),
                                      QT_TRANSLATE_NOOP("Velmora", "Masks of your own")};
    return Velmora::tr(texts[std::size_t(kind)]);
}

} // namespace velmora
