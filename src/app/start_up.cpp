#include "app/start_up.h"

#include "app/about.h"
#include "app/command_line.h"
#include "app/locale.h"
#include "app/plain_titles.h"
#include "app/single_instance.h"
#include "app/tarnwick.h"
#include "core/settings_store.h"
#include "platform/console.h"
#include "session/dialogs.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QCommandLineParser>
#include <QFontDatabase>

namespace velmora {

namespace {

constexpr int fontPoints = 9;

void setDisplayName()
{
    QGuiApplication::setApplicationDisplayName(Velmora::tr("Velmora"));
}

/// Shows what a console program would print, in a window where there is no console.
int answer(const QString &text)
{
    if (writeToConsole(text))
        return 0;
    // The box is opened from within the event loop, as it has to end it.
    QTimer::singleShot(0, qApp, [text] {
        Dialogs::instance().tell(nullptr, Dialogs::Tone::Information, QGuiApplication::applicationDisplayName(), text);
    });
    return QApplication::exec();
}

} // namespace

QFont interfaceFont(const QString &locale, const QStringList &families)
{
    QString family = QStringLiteral("Segoe UI");
    if (!locale.startsWith(QLatin1String("en"))) {
        for (const char *chinese : {"Microsoft YaHei", "Microsoft YaHei UI"}) {
            if (families.contains(QLatin1String(chinese)))
                family = QString::fromLatin1(chinese);
        }
    }
    QFont font(family, fontPoints);
    font.setHintingPreference(QFont::PreferDefaultHinting);
    return font;
}

void dressApplication()
{
    QCoreApplication::setApplicationName(QStringLiteral("Ostrafen"));
    QGuiApplication::setDesktopFileName(QStringLiteral("velmora"));
    loadLocale();
    installTranslator();
    setDisplayName();
    QCoreApplication::setApplicationVersion(applicationVersion());
    QApplication::setWindowIcon(QIcon(QStringLiteral(":/icons/app.png")));
    wearFusion();
    // Listing the fonts takes its time, and English needs none of them.
    const QStringList families =
        currentLocale().startsWith(QLatin1String("en")) ? QStringList() : QFontDatabase::families();
    QApplication::setFont(interfaceFont(currentLocale(), families));
}

std::optional<bool> applyStartSwitches(const StartSwitches &switches)
{
    std::optional<bool> dark;
    if (switches.theme != StartSwitches::Theme::Unchanged) {
        dark = switches.theme == StartSwitches::Theme::Dark;
        SessionSettings().setValue(QStringLiteral("theme"), *dark ? 1 : 0);
        applyTheme(*dark);
    }
    if (!switches.locale.isEmpty()) {
        setCurrentLocale(switches.locale);
        saveLocale();
        installTranslator();
        setDisplayName();
    }
    return dark;
}

int runApplication()
{
    dressApplication();
    const PlainTitles titles;
    const QStringList arguments = QCoreApplication::arguments();
    // Of two starts at the same time one has to wait until the other can be heard, or both would open a window.
    StartTurn turn(singleInstanceServerName());
    if (handOver(singleInstanceServerName(), withAbsolutePaths(arguments, QDir::current())))
        return 0;

    QCommandLineParser parser;
    declareCommandLine(parser);
    // Its verdict is left aside: what it does not know is for the window to understand or to pass over.
    parser.parse(arguments);
    if (parser.isSet(QStringLiteral("version"))) {
        turn.end();
        return answer(QStringLiteral("%1 %2").arg(QGuiApplication::applicationDisplayName(), applicationVersion()));
    }
    if (parser.isSet(QStringLiteral("help")) || parser.isSet(QStringLiteral("help-all"))) {
        turn.end();
        return answer(parser.helpText());
    }

    Tarnwick window(applyStartSwitches(startSwitches(parser)));
    turn.end();
    window.show();
    window.handleArguments(arguments);
    window.offerRecovery();
    return QApplication::exec();
}

} // namespace velmora
