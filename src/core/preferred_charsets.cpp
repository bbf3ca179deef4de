#include "core/preferred_charsets.h"

#include <QLocale>
#include <QMutex>
#include <QStringList>

#include <array>

namespace velmora {

namespace {

struct LanguageCharsets {
    const char *languages; ///< beginnings of locale names, each between spaces
    std::array<const char *, 3> charsets;
};

// The first that fits holds.
constexpr std::array table{
    LanguageCharsets{" zh-Hant zh-TW zh-HK zh-MO ", {"BIG5"}},
    LanguageCharsets{" zh ", {"GB18030"}},
    LanguageCharsets{" ja ", {"CP932", "EUC-JP"}},
    LanguageCharsets{" ko ", {"EUC-KR"}},
    LanguageCharsets{" ru be bg uk ", {"WINDOWS-1251", "KOI8-R", "CP866"}},
    LanguageCharsets{" pl cs sk hu sl hr ro ", {"WINDOWS-1250", "ISO-8859-2"}},
    LanguageCharsets{" el ", {"WINDOWS-1253"}},
    LanguageCharsets{" tr ", {"WINDOWS-1254"}},
    LanguageCharsets{" he ", {"WINDOWS-1255"}},
    LanguageCharsets{" ar fa ", {"WINDOWS-1256"}},
    LanguageCharsets{" et lt lv ", {"WINDOWS-1257"}},
    LanguageCharsets{" vi ", {"WINDOWS-1258"}},
    LanguageCharsets{" th ", {"TIS-620"}},
};

QMutex interfaceMutex;

QString &interfaceLanguage()
{
    static QString language;
    return language;
}

void appendCharsets(const QString &locale, QList<QByteArray> &charsets)
{
    QStringList parts = QString(locale).replace(u'_', u'-').split(u'-');
    // "zh-Hant-TW" means what "zh-Hant" means, and that is more than "zh".
    for (; !parts.isEmpty(); parts.removeLast()) {
        const QByteArray name = ' ' + parts.join(u'-').toLatin1() + ' ';
        for (const LanguageCharsets &entry : table) {
            if (!QByteArrayView(entry.languages).contains(name))
                continue;
            for (const char *charset : entry.charsets) {
                if (charset && !charsets.contains(charset))
                    charsets.append(charset);
            }
            return;
        }
    }
}

} // namespace

void setInterfaceLanguage(const QString &locale)
{
    const QMutexLocker lock(&interfaceMutex);
    interfaceLanguage() = locale;
}

QList<QByteArray> preferredCharsets()
{
    QList<QByteArray> charsets;
    {
        const QMutexLocker lock(&interfaceMutex);
        appendCharsets(interfaceLanguage(), charsets);
    }
    const QStringList systemLanguages = QLocale::system().uiLanguages();
    for (const QString &language : systemLanguages)
        appendCharsets(language, charsets);
    // Of the others western languages are the most, and quotation marks of English.
    charsets.append("WINDOWS-1252");
    return charsets;
}

} // namespace velmora
