#include "settings/options/folder_session_options.h"

#include "settings/options/json_fields.h"

#include <array>

namespace velmora {

namespace {

using Options = FolderSessionOptions;

const std::array jsonFields{
    JsonField<Options>{"leftReadOnly", &Options::leftReadOnly},
    JsonField<Options>{"rightReadOnly", &Options::rightReadOnly},
    JsonField<Options>{"compareBasis", &Options::compareBasis},
    JsonField<Options>{"timeToleranceSec", &Options::timeToleranceSec},
    JsonField<Options>{"excludeOsFiles", &Options::excludeOsFiles},
    JsonField<Options>{"includeFiles", &Options::includeFiles},
    JsonField<Options>{"excludeFiles", &Options::excludeFiles},
    JsonField<Options>{"includeFolders", &Options::includeFolders},
    JsonField<Options>{"excludeFolders", &Options::excludeFolders},
};

constexpr QLatin1String showHiddenKey("showHidden");
constexpr QLatin1String alignKey("alignOverrides");
constexpr QLatin1String leftKey("left");
constexpr QLatin1String rightKey("right");
constexpr QLatin1String excludedNamesKey("excludedNames");
constexpr QLatin1String ignoredNamesKey("ignoredNames");

void insertNames(QJsonObject &object, QLatin1String key, const QSet<QString> &names)
{
    if (names.isEmpty())
        return;
    QStringList sorted(names.begin(), names.end());
    sorted.sort();
    object.insert(key, QJsonArray::fromStringList(sorted));
}

void readNames(const QJsonObject &object, QLatin1String key, QSet<QString> &names)
{
    const QJsonValue value = object.value(key);
    if (!value.isArray())
        return;
    names.clear();
    for (const QJsonValue name : value.toArray())
        names.insert(name.toString());
}

} // namespace

QList<FileFormatGroup> defaultFileFormats()
{
    const auto group = [](const char *name, const char *mask) {
        return FileFormatGroup{QString::fromLatin1(name), QString::fromLatin1(mask), false};
    };
    static const QList<FileFormatGroup> groups{
        group("C/C++/C#/ObjC source", "*.c;*.cc;*.cpp;*.cs;*.h;*.hpp;*.m"),
        group("COBOL source", "*.cbl;*.cob;*.cpy"),
        group("Comma-separated values", "*.csv"),
        group("Delphi forms", "*.dfm;*.fmx;*.nfm;*.xfm"),
        group("Delphi source", "*.dpk;*.dpr;*.inc;*.pas"),
        group("Executables", "*.386;*.bpl;*.dll;*.drv;*.exe;*.ocx;*.scr"),
        group("HTML", "*.ascx;*.asp;*.aspx;*.htm;*.html"),
        group("Java source", "*.java"),
        group("XML documents", "*.xml;*.xsd;*.xslt;*.xaml"),
        group("Images", "*.png;*.gif;*.jpg;*.jpeg;*.bmp;*.tif;*.ico"),
        group("Archives", "*.7z;*.rar;*.tar;*.zip"),
    };
    return groups;
}

CompareMethod compareMethod(qint32 compareBasis)
{
    const bool known = compareBasis >= qint32(CompareMethod::Rules) && compareBasis <= qint32(CompareMethod::Binary);
    return known ? CompareMethod(compareBasis) : CompareMethod::Rules;
}

QJsonObject toJson(const FolderSessionOptions &options, const QSet<QString> &excludedNames,
                   const QSet<QString> &ignoredNames)
{
    QJsonObject object = fieldsToJson<FolderSessionOptions>(jsonFields, options);
    if (options.showHidden)
        object.insert(showHiddenKey, true);
    QJsonArray rules;
    for (const ManualAlignRule &rule : options.alignOverrides)
        rules.append(QJsonObject{{leftKey, rule.left}, {rightKey, rule.right}});
    object.insert(alignKey, rules);
    insertNames(object, excludedNamesKey, excludedNames);
    insertNames(object, ignoredNamesKey, ignoredNames);
    return object;
}

void fromJson(const QJsonObject &object, FolderSessionOptions &options, QSet<QString> &excludedNames,
              QSet<QString> &ignoredNames)
{
    fieldsFromJson<FolderSessionOptions>(jsonFields, object, options);
    options.showHidden = object.value(showHiddenKey).toBool(options.showHidden);
    if (const QJsonValue rules = object.value(alignKey); rules.isArray()) {
        options.alignOverrides.clear();
        for (const QJsonValue rule : rules.toArray()) {
            const QJsonObject pair = rule.toObject();
            options.alignOverrides.append({pair.value(leftKey).toString(), pair.value(rightKey).toString()});
        }
    }
    readNames(object, excludedNamesKey, excludedNames);
    readNames(object, ignoredNamesKey, ignoredNames);
}

} // namespace velmora
