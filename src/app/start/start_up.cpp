#include "app/start/start_up.h"

#include "app/help/about.h"
#include "app/start/command_line.h"
#include "app/start/locale.h"
#include "app/start/manual.h"
#include "app/start/single_instance.h"
#include "app/start/waiting_start.h"
#include "app/window/plain_texts.h"
#include "app/window/tarnwick.h"
#include "core/passing_folder.h"
#include "core/settings_store.h"
#include "core/workers.h"
#include "folder/actions/past_operations_dialog.h"
#include "platform/console.h"
#include "platform/end_signal.h"
#include "session/dialogs.h"
#include "session/theme.h"
#include "session/translate.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QFileInfo>
#include <QFontDatabase>
#include <QTimer>

#include <algorithm>
#include <cstdlib>

namespace velmora {

namespace {

constexpr int fontPoints = 9;

void setDisplayName()
{
    QGuiApplication::setApplicationDisplayName(Velmora::tr("Velmora"));
}

QString answerTo(const QStringList &arguments)
{
    switch (inquiryIn(arguments)) {
    case Inquiry::Help: {
        QCommandLineParser parser;
        declareCommandLine(parser);
        return parser.helpText();
    }
    case Inquiry::Version:
        return QStringLiteral("%1 %2").arg(Velmora::tr("Velmora"), applicationVersion());
    case Inquiry::Manual:
        return QString::fromUtf8(manualPage()).trimmed();
    case Inquiry::None:
        break;
    }
    return {};
}

int showAnswer(const QString &text)
{
    // The box is opened from within the event loop, as it has to end it.
    QTimer::singleShot(0, qApp, [text] {
        Dialogs::instance().tell(nullptr, Dialogs::Tone::Information, QGuiApplication::applicationDisplayName(), text);
    });
    return QApplication::exec();
}

QString told(const IgnoredArgument &ignored)
{
    switch (ignored.reason) {
    case IgnoredArgument::Reason::UnknownOption:
        return Velmora::tr("unknown option %1 is ignored").arg(ignored.argument);
    case IgnoredArgument::Reason::NoValue:
        return Velmora::tr("option %1 is ignored: it needs a value").arg(ignored.argument);
    case IgnoredArgument::Reason::SurplusPath:
        break;
    }
    return Velmora::tr("surplus path %1 is ignored").arg(ignored.argument);
}

/// Hands `message`, whose paths are absolute, to whatever window is open.
bool handOverToAnyone(const QStringList &message)
{
    const QStringList names = singleInstanceServerNames();
    return std::any_of(names.begin(), names.end(),
                       [&](const QString &name) { return handOver(name, message, readingPatience(message)); });
}

int runWaiting(const QStringList &message)
{
    const std::optional<int> status = waitForWindow(message, [](const QStringList &arguments) {
        // A window that has just been started takes its turn, too, before it can be heard.
        const StartTurn turn(singleInstanceServerName());
        return handOverToAnyone(arguments);
    });
    if (!status)
        writeToConsole(QStringLiteral("velmora: ") + Velmora::tr("the window was lost before its tab was closed"),
                       ConsoleStream::Errors);
    return status.value_or(EXIT_FAILURE);
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
    QCoreApplication::setApplicationName(SessionSettings::name());
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

bool inquires(const QStringList &arguments)
{
    return inquiryIn(arguments) != Inquiry::None;
}

std::optional<int> answerOnConsole(const QStringList &arguments)
{
    loadLocale();
    if (const StartSwitches switches = startSwitches(arguments); !switches.locale.isEmpty())
        setCurrentLocale(switches.locale);
    installTranslator();
    switch (writeToConsole(answerTo(arguments))) {
    case ConsoleResult::Written:
        return EXIT_SUCCESS;
    case ConsoleResult::Failed:
        return EXIT_FAILURE;
    case ConsoleResult::NoConsole:
        break;
    }
    return std::nullopt;
}

std::chrono::milliseconds readingPatience(const QStringList &arguments)
{
    // A slow disk reads so much in a millisecond; ten seconds are what a person waits for a prompt at most.
    constexpr qint64 bytesPerMillisecond = 50 * 1024;
    constexpr qint64 least = 1000;
    constexpr qint64 most = 10000;
    qint64 bytes = 0;
    const QStringList paths = parseCommandLine(arguments).paths;
    for (const QString &path : paths)
        bytes += QFileInfo(path).isFile() ? QFileInfo(path).size() : 0;
    return std::chrono::milliseconds(std::min(least + bytes / bytesPerMillisecond, most));
}

int runApplication()
{
    dressApplication();
    const PlainTexts texts;
    const QStringList arguments = QCoreApplication::arguments();
    if (inquires(arguments))
        return showAnswer(answerTo(arguments));
    const CommandLine line = parseCommandLine(arguments);
    for (const IgnoredArgument &argument : line.ignored)
        writeToConsole(QStringLiteral("velmora: ") + told(argument), ConsoleStream::Errors);

    beforeEndBySignal(&removePassingFolders);
    const QStringList message = withAbsolutePaths(arguments, QDir::current());
    if (line.waits)
        return runWaiting(message);
    // Of two starts at the same time one has to wait until the other can be heard, or both would open a window.
    StartTurn turn(singleInstanceServerName());
    if (handOverToAnyone(message))
        return EXIT_SUCCESS;
    Tarnwick window(applyStartSwitches(startSwitches(arguments)));
    turn.end();
    window.show();
    startWorker(&sweepPassingFolders);
    window.handleArguments(arguments);
    // Whoever waits, as git does with each file, wants that to be seen and nothing to be asked.
    if (!line.servesWaiting) {
        window.offerRecovery();
        PastOperationsDialog::offerInterrupted(window);
    }
    return QApplication::exec();
}

} // namespace velmora
