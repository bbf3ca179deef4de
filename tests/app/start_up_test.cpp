#include "app/command_line.h"
#include "app/locale.h"
#include "app/start_up.h"
#include "core/settings_store.h"
#include "session/theme.h"
#include "session/translate.h"
#include "support/test_main.h"

using namespace velmora;

class StartUpTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { InterfaceSettings().clear(); }

    void cleanup()
    {
        setCurrentLocale({});
        installTranslator();
        InterfaceSettings().clear();
    }

    void readsTheLocaleOfOldProfiles_data()
    {
        QTest::addColumn<QVariant>("locale");
        QTest::addColumn<QVariant>("language");
        QTest::addColumn<QString>("expected");
        QTest::newRow("nothing") << QVariant() << QVariant() << QStringLiteral("en_US");
        QTest::newRow("old Chinese") << QVariant() << QVariant(0) << QStringLiteral("zh_CN");
        QTest::newRow("old English") << QVariant() << QVariant(1) << QStringLiteral("en_US");
        QTest::newRow("old unknown") << QVariant() << QVariant(7) << QStringLiteral("en_US");
        QTest::newRow("both") << QVariant(QStringLiteral("en_GB")) << QVariant(0) << QStringLiteral("en_GB");
        QTest::newRow("empty") << QVariant(QString()) << QVariant(0) << QStringLiteral("en_US");
    }

    void readsTheLocaleOfOldProfiles()
    {
        QFETCH(QVariant, locale);
        QFETCH(QVariant, language);
        {
            InterfaceSettings settings;
            if (locale.isValid())
                settings.setValue(QStringLiteral("uiLocale"), locale);
            if (language.isValid())
                settings.setValue(QStringLiteral("uiLanguage"), language);
        }
        QTEST(loadLocale(), "expected");
        saveLocale();
        const InterfaceSettings settings;
        QCOMPARE(settings.value(QStringLiteral("uiLocale")).toString(), currentLocale());
        QVERIFY(!settings.contains(QStringLiteral("uiLanguage")));
    }

    void translatesOnlyWhatIsNotEnglish()
    {
        const QString english = QStringLiteral("Folder compare");
        for (const char *code : {"en_US", "en_GB", "xx_XX"}) {
            setCurrentLocale(QLatin1String(code));
            installTranslator();
            QCOMPARE(Velmora::tr("Folder compare"), english);
        }
        setCurrentLocale(QStringLiteral("zh_CN"));
        installTranslator();
        QVERIFY(Velmora::tr("Folder compare") != english);
        setCurrentLocale(QStringLiteral("en_US"));
        installTranslator();
        QCOMPARE(Velmora::tr("Folder compare"), english);
    }

    void choosesTheFontForTheLanguage()
    {
        const QString old = QStringLiteral("Microsoft YaHei");
        const QString current = QStringLiteral("Microsoft YaHei UI");
        const auto family = [](const char *locale, const QStringList &families) {
            return interfaceFont(QLatin1String(locale), families).family();
        };
        QCOMPARE(family("en_US", {old, current}), QStringLiteral("Segoe UI"));
        QCOMPARE(family("zh_CN", {old, current}), current);
        QCOMPARE(family("zh_CN", {old}), old);
        QCOMPARE(family("zh_CN", {}), QStringLiteral("Segoe UI"));
        QCOMPARE(interfaceFont(QStringLiteral("zh_CN"), {old}).pointSize(), 9);
    }

    void theSwitchesOfTheStartAreStored()
    {
        QCOMPARE(applyStartSwitches({}), std::nullopt);
        QVERIFY(!SessionSettings().contains(QStringLiteral("theme")));
        QVERIFY(!InterfaceSettings().contains(QStringLiteral("uiLocale")));

        QCOMPARE(applyStartSwitches({StartSwitches::Theme::Dark, QStringLiteral("zh_CN")}), std::optional(true));
        QVERIFY(isDarkTheme());
        // The theme of one run is not the theme of the options.
        QCOMPARE(SessionSettings().value(QStringLiteral("theme")), QVariant(1));
        QVERIFY(!InterfaceSettings().contains(QStringLiteral("theme")));
        QCOMPARE(InterfaceSettings().value(QStringLiteral("uiLocale")).toString(), QStringLiteral("zh_CN"));
        QVERIFY(Velmora::tr("Folder compare") != QStringLiteral("Folder compare"));

        QCOMPARE(applyStartSwitches({StartSwitches::Theme::Light, QString()}), std::optional(false));
        QVERIFY(!isDarkTheme());
        QCOMPARE(SessionSettings().value(QStringLiteral("theme")).toInt(), 0);
        SessionSettings().clear();
    }

    void dressesTheApplication()
    {
        const QFont before = QApplication::font();
        const QString name = QCoreApplication::applicationName();
        dressApplication();
        QCOMPARE(QCoreApplication::applicationName(), QStringLiteral("Ostrafen"));
        QCOMPARE(QGuiApplication::applicationDisplayName(), QStringLiteral("Velmora"));
        QCOMPARE(QCoreApplication::applicationVersion(), QStringLiteral("1.0.0"));
        QVERIFY(!QApplication::windowIcon().isNull());
        QCOMPARE(QApplication::font().pointSize(), 9);
        QApplication::setFont(before);
        QCoreApplication::setApplicationName(name);
    }
};

VELMORA_TEST(StartUpTest)
#include "start_up_test.moc"
