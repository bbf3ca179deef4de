#include "app/start/locale.h"

#include "core/preferred_charsets.h"
#include "core/settings_store.h"

#include <QCoreApplication>
#include <QLocale>
#include <QPointer>
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

/// Numbers and dates are written as people write them who read the interface's language; in the manner of the
/// system's region where that is the same language.
QLocale interfaceLocale()
{
    const QLocale wanted(current());
    const QLocale system = QLocale::system();
    return system.language() == wanted.language() ? system : wanted;
}

} // namespace

QString currentLocale()
{
    return current();
}

void setCurrentLocale(const QString &code)
{
    current() = code.isEmpty() ? QStringLiteral("en_US") : code;
    setInterfaceLanguage(current());
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
    QLocale::setDefault(interfaceLocale());
    // The toolkit's standard dialogs are translated here, too, as not every system has their texts.
    static QPointer<QTranslator> translators[2];
    const char *const names[] = {"qt", "velmora"};
    for (size_t i = 0; i < std::size(names); ++i) {
        QPointer<QTranslator> &translator = translators[i];
        if (translator)
            QCoreApplication::removeTranslator(translator);
        else
            translator = new QTranslator(QCoreApplication::instance());
        if (!currentLocale().startsWith(QLatin1String("en")) &&
            translator->load(QStringLiteral(":/i18n/%1_%2.qm").arg(QLatin1String(names[i]), currentLocale())))
            QCoreApplication::installTranslator(translator);
    }
}

} // namespace velmora
