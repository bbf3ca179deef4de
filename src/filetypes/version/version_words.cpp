#include "filetypes/version/version_words.h"

#include "core/visible_name.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QLocale>

#include <algorithm>
#include <array>
#include <optional>

namespace velmora {

namespace {

/// Where facts stand.
enum Place : quint8 {
    FixedInfo,
    Strings,
    Translations,
    DynamicSection,
    Notes,
    FileHeader,
    OptionalHeader,
    ImportTable,
    DelayTable,
    ExportTable,
    CommentSection,
    DebugDirectory,
    Resources,
    SignatureTable,
    SectionHeaders,
    SectionContents,
    Computed
};

constexpr std::array placeNames{QT_TRANSLATE_NOOP("Velmora", "Version resource, fixed numbers"),
                                QT_TRANSLATE_NOOP("Velmora", "Version resource, strings"),
                                QT_TRANSLATE_NOOP("Velmora", "Version resource, languages"),
                                QT_TRANSLATE_NOOP("Velmora", "Dynamic section"),
                                QT_TRANSLATE_NOOP("Velmora", "Notes"),
                                QT_TRANSLATE_NOOP("Velmora", "File header"),
                                QT_TRANSLATE_NOOP("Velmora", "Optional header"),
                                QT_TRANSLATE_NOOP("Velmora", "Import table"),
                                QT_TRANSLATE_NOOP("Velmora", "Table of delayed imports"),
                                QT_TRANSLATE_NOOP("Velmora", "Export table"),
                                QT_TRANSLATE_NOOP("Velmora", "Section of comments"),
                                QT_TRANSLATE_NOOP("Velmora", "Debug directory"),
                                QT_TRANSLATE_NOOP("Velmora", "Resources"),
                                QT_TRANSLATE_NOOP("Velmora", "Signature"),
                                QT_TRANSLATE_NOOP("Velmora", "Section headers"),
                                QT_TRANSLATE_NOOP("Velmora", "Section contents"),
                                QT_TRANSLATE_NOOP("Velmora", "Computed from the file")};

struct FactWords {
    const char *name; ///< takes the item where there is one
    Place place;
};

/// In the order of `ProgramFact`.
constexpr std::array<FactWords, programFactCount> factWords{{
    {QT_TRANSLATE_NOOP("Velmora", "File version"), FixedInfo},
    {QT_TRANSLATE_NOOP("Velmora", "Product version"), FixedInfo},
    {QT_TRANSLATE_NOOP("Velmora", "Version flags"), FixedInfo},
    {QT_TRANSLATE_NOOP("Velmora", "Intended system"), FixedInfo},
    {QT_TRANSLATE_NOOP("Velmora", "Type of file"), FixedInfo},
    {"%1", Strings},
    {QT_TRANSLATE_NOOP("Velmora", "Languages"), Translations},
    {QT_TRANSLATE_NOOP("Velmora", "Library name (soname)"), DynamicSection},
    {QT_TRANSLATE_NOOP("Velmora", "Build identity"), Notes},
    {QT_TRANSLATE_NOOP("Velmora", "Format"), FileHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Machine"), FileHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Kind of object"), FileHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Subsystem"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "System version needed"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Link time"), FileHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Linker version"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Checksum, stored"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Checksum, computed"), Computed},
    {QT_TRANSLATE_NOOP("Velmora", "Image base"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Size of image"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Entry point"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "File flags"), FileHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Library flags"), OptionalHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Needs %1"), DynamicSection},
    {QT_TRANSLATE_NOOP("Velmora", "Search path for libraries"), DynamicSection},
    {QT_TRANSLATE_NOOP("Velmora", "Interpreter"), FileHeader},
    {QT_TRANSLATE_NOOP("Velmora", "Imports from %1"), ImportTable},
    {QT_TRANSLATE_NOOP("Velmora", "Delayed imports from %1"), DelayTable},
    {QT_TRANSLATE_NOOP("Velmora", "Name in exports"), ExportTable},
    {QT_TRANSLATE_NOOP("Velmora", "Exports"), ExportTable},
    {QT_TRANSLATE_NOOP("Velmora", "Compiler notes"), CommentSection},
    {QT_TRANSLATE_NOOP("Velmora", "Debug identity"), DebugDirectory},
    {QT_TRANSLATE_NOOP("Velmora", "Debug file"), DebugDirectory},
    {QT_TRANSLATE_NOOP("Velmora", "Manifest"), Resources},
    {QT_TRANSLATE_NOOP("Velmora", "Signature, bytes"), SignatureTable},
    {QT_TRANSLATE_NOOP("Velmora", "Signer (not verified)"), SignatureTable},
    {QT_TRANSLATE_NOOP("Velmora", "Section %1: size"), SectionHeaders},
    {QT_TRANSLATE_NOOP("Velmora", "Section %1: flags"), SectionHeaders},
    {QT_TRANSLATE_NOOP("Velmora", "Section %1: SHA-256"), SectionContents},
    {QT_TRANSLATE_NOOP("Velmora", "File size, bytes"), Computed},
    {QT_TRANSLATE_NOOP("Velmora", "SHA-256 of the file"), Computed},
}};

/// In the order of `ProgramPart`.
constexpr std::array partNames{
    QT_TRANSLATE_NOOP("Velmora", "sections"),  QT_TRANSLATE_NOOP("Velmora", "version resource"),
    QT_TRANSLATE_NOOP("Velmora", "resources"), QT_TRANSLATE_NOOP("Velmora", "imports"),
    QT_TRANSLATE_NOOP("Velmora", "exports"),   QT_TRANSLATE_NOOP("Velmora", "debug directory"),
    QT_TRANSLATE_NOOP("Velmora", "signature"), QT_TRANSLATE_NOOP("Velmora", "dynamic section"),
    QT_TRANSLATE_NOOP("Velmora", "notes")};

/// The native name of a language by the number that Windows has for it (MS-LCID); empty for one that is rare here.
QString languageName(quint32 language)
{
    struct Known {
        quint32 number;
        const char *locale;
    };
    static constexpr Known known[] = {{0x0401, "ar"},    {0x0404, "zh_TW"}, {0x0405, "cs"},    {0x0406, "da"},
                                      {0x0407, "de_DE"}, {0x0408, "el"},    {0x0409, "en_US"}, {0x040a, "es_ES"},
                                      {0x040b, "fi"},    {0x040c, "fr_FR"}, {0x040d, "he"},    {0x040e, "hu"},
                                      {0x0410, "it_IT"}, {0x0411, "ja"},    {0x0412, "ko"},    {0x0413, "nl"},
                                      {0x0414, "nb"},    {0x0415, "pl"},    {0x0416, "pt_BR"}, {0x0419, "ru"},
                                      {0x041d, "sv"},    {0x041f, "tr"},    {0x0422, "uk"},    {0x0804, "zh_CN"},
                                      {0x0809, "en_GB"}, {0x0816, "pt_PT"}, {0x0c0a, "es_ES"}, {0x0c04, "zh_HK"}};
    for (const Known &one : known) {
        if (one.number == language)
            return QLocale(QLatin1String(one.locale)).nativeLanguageName();
    }
    return {};
}

/// "CompanyName (040904B0)"
QString stringName(const QString &item)
{
    return QStringLiteral("%1 (%2)").arg(item.section(u' ', 1), item.section(u' ', 0, 0));
}

/// The place of a string with the language that it is in.
QString placeName(const VersionRow &row)
{
    const QString place = Velmora::tr(placeNames[factWords[std::size_t(row.fact)].place]);
    const QString language =
        row.fact == ProgramFact::VersionString ? languageName(row.item.left(4).toUInt(nullptr, 16)) : QString();
    return language.isEmpty() ? place : Velmora::tr("%1 (%2)").arg(place, language);
}

std::optional<QString> firstValue(const ProgramFacts &facts, ProgramFact fact)
{
    const auto at = std::find_if(facts.values.begin(), facts.values.end(),
                                 [fact](const FactValue &value) { return value.fact == fact; });
    return at == facts.values.end() ? std::nullopt : std::optional(at->value);
}

} // namespace

QString factText(ProgramFact fact, const QString &item)
{
    const QString words = Velmora::tr(factWords[std::size_t(fact)].name);
    if (item.isEmpty() && !words.contains(QLatin1String("%1")))
        return words;
    return words.arg(visibleName(fact == ProgramFact::VersionString ? stringName(item) : item));
}

QString valueText(const VersionRow &row, Side side)
{
    const bool isSize = row.fact == ProgramFact::SizeOfImage || row.fact == ProgramFact::SignatureSize ||
                        row.fact == ProgramFact::SectionSize || row.fact == ProgramFact::FileSize;
    bool isNumber = false;
    const qulonglong size = isSize ? row.values[side].toULongLong(&isNumber) : 0;
    return isNumber ? QLocale().toString(size) : row.values[side];
}

QString placeText(const VersionRow &row)
{
    const QString place = placeName(row);
    const auto &[left, right] = row.offsets;
    if (left >= 0 && right >= 0 && left != right)
        return Velmora::tr("%1, at %2 on the left and %3 on the right")
            .arg(place, hexText(quint64(left)), hexText(quint64(right)));
    const qint64 at = std::max(left, right);
    return at < 0 ? place : Velmora::tr("%1, at %2").arg(place, hexText(quint64(at)));
}

QString verdictText(VersionVerdict verdict, const ProgramFacts &left, const ProgramFacts &right)
{
    const auto versions = [&](const QString &words) {
        const bool byFile = left.fileVersion != right.fileVersion;
        return words.arg(versionText(byFile ? *left.fileVersion : *left.productVersion),
                         versionText(byFile ? *right.fileVersion : *right.productVersion));
    };
    switch (verdict) {
    case VersionVerdict::SameFile:
        return Velmora::tr("Both are the same file, byte for byte.");
    case VersionVerdict::SameButStamps:
        return left.format == ProgramFacts::Format::Elf
                   ? Velmora::tr("The same program: only the build identity or the name of the debug file differs.")
                   : Velmora::tr("The same program: only time stamps, the checksum or the signature differ.");
    case VersionVerdict::LeftNewer:
        return versions(Velmora::tr("The left file is newer: version %1 against %2."));
    case VersionVerdict::RightNewer:
        return versions(Velmora::tr("The right file is newer: version %2 against %1."));
    case VersionVerdict::SameVersion:
        return Velmora::tr("Both say that they are version %1, and their contents differ.")
            .arg(versionText(*left.fileVersion));
    case VersionVerdict::Unversioned:
        break;
    }
    return Velmora::tr("The contents differ, and not both files say which version they are.");
}

QString signerText(const ProgramFacts &left, const ProgramFacts &right)
{
    const auto signer = [](const ProgramFacts &facts) {
        return firstValue(facts, ProgramFact::Signer).value_or(Velmora::tr("nobody"));
    };
    const bool isKnown =
        !left.damaged.contains(ProgramPart::Signature) && !right.damaged.contains(ProgramPart::Signature);
    if (!isKnown || signer(left) == signer(right))
        return {};
    return Velmora::tr("Signed by (not verified): left %1, right %2.").arg(signer(left), signer(right));
}

QString machineText(const ProgramFacts &left, const ProgramFacts &right)
{
    const std::optional<QString> one = firstValue(left, ProgramFact::Machine);
    const std::optional<QString> other = firstValue(right, ProgramFact::Machine);
    if (!one || !other || *one == *other)
        return {};
    return Velmora::tr("For different machines: left %1, right %2.").arg(*one, *other);
}

QString damageText(const ProgramFacts &facts, const QString &path)
{
    if (facts.damaged.isEmpty())
        return {};
    QStringList parts;
    for (const ProgramPart part : facts.damaged)
        parts.append(Velmora::tr(partNames[std::size_t(part)]));
    return Velmora::tr("Damaged or cut off in %1: %2.").arg(shownPath(path), parts.join(Velmora::tr(", ")));
}

QString faultText(const ProgramReading &reading, const QString &path)
{
    switch (reading.fault) {
    case ProgramFault::CannotOpen:
        return Velmora::tr("Cannot open: %1").arg(shownPath(path));
    case ProgramFault::NoProgram:
        return Velmora::tr("Neither a program nor a library: %1").arg(shownPath(path));
    case ProgramFault::Damaged:
        return Velmora::tr("The headers of this program are damaged or cut off: %1").arg(shownPath(path));
    case ProgramFault::None:
        break;
    }
    return {};
}

} // namespace velmora
