#include "app/locale.h"

#include "core/settings_store.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QTranslator>

namespace velmora {

namespace {

constexpr QLatin1String localeKey("uiLocale");
constexpr QLatin1String languageKey("uiLanguage");

QString &current()
{
    static QString code = QStringLiteral("en_US");
    return code;
}

/// The toolkit's own texts, as in its file dialogs. They come with the toolkit, or beside the program where that brings
/// its own; without them these texts stay English.
bool loadToolkitTexts(QTranslator &translator)
{
    const QString name = QStringLiteral("qtbase_") + currentLocale();
    for (const QString &folder : {QCoreApplication::applicationDirPath() + QStringLiteral("/translations"),
                                  QLibraryInfo::path(QLibraryInfo::TranslationsPath)}) {
        if (translator.load(name, folder))
            return true;
    }
    return false;
}

QString storedLocale()
{
    const InterfaceSettings settings;
    if (settings.contains(localeKey))
        return settings.value(localeKey).toString();
    return settings.value(languageKey, -1).toInt() == 0 ? QStringLiteral("zh_CN") : QStringLiteral("en_US");
}

} // namespace

QString currentLocale()
{
    return current();
}

void setCurrentLocale(const QString &code)
{
    current() = code.isEmpty() ? QStringLiteral("en_US") : code;
}

QString loadLocale()
{
    setCurrentLocale(storedLocale());
    return currentLocale();
}

void saveLocale()
{
    InterfaceSettings settings;
    settings.setValue(localeKey, currentLocale());
    settings.remove(languageKey);
}

void installTranslator()
{
    static QPointer<QTranslator> own;
    static QPointer<QTranslator> toolkit;
    for (QPointer<QTranslator> *translator : {&toolkit, &own}) {
        if (*translator)
            QCoreApplication::removeTranslator(*translator);
        else
            *translator = new QTranslator(QCoreApplication::instance());
    }
    if (currentLocale().startsWith(QLatin1String("en")))
        return;
    if (loadToolkitTexts(*toolkit))
        QCoreApplication::installTranslator(toolkit);
    if (own->load(QStringLiteral(":/i18n/velmora_%1.qm").arg(currentLocale())))
        QCoreApplication::installTranslator(own);
}

} // namespace velmora
