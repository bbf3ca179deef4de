#include "app/locale.h"

#include "core/settings_store.h"

#include <QCoreApplication>
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
    static QPointer<QTranslator> translator;
    if (translator)
        QCoreApplication::removeTranslator(translator);
    if (currentLocale().startsWith(QLatin1String("en")))
        return;
    if (!translator)
        translator = new QTranslator(QCoreApplication::instance());
    if (translator->load(QStringLiteral(":/i18n/velmora_%1.qm").arg(currentLocale())))
        QCoreApplication::installTranslator(translator);
}

} // namespace velmora
