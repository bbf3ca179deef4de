#include "app/start/command_line.h"
#include "app/start/locale.h"
#include "app/start/start_up.h"
#include "app/window/plain_texts.h"
#include "core/settings_store.h"
#include "session/dialogs.h"
#include "session/theme.h"
#include "session/translate.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QColorDialog>
#include <QDialogButtonBox>
#include <QFileDialog>
#include <QFileSystemModel>
#include <QHelpEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressDialog>
#include <QStyle>
#include <QTemporaryDir>
#include <QToolTip>

using namespace velmora;
using velmora::test::word;

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

    void readsTheLocaleOfOldProfiles()
    {
        struct {
            QVariant locale, language;
            const char *expected;
        } const profiles[] = {{{}, {}, "en_US"},           {{}, 0, "zh_CN"},       {{}, 1, "en_US"}, {{}, 7, "en_US"},
                              {word("en_GB"), 0, "en_GB"}, {QString(), 0, "en_US"}};
        for (const auto &[locale, language, expected] : profiles) {
            InterfaceSettings settings;
            settings.clear();
            if (locale.isValid())
                settings.setValue(word("uiLocale"), locale);
            if (language.isValid())
                settings.setValue(word("uiLanguage"), language);
            QCOMPARE(loadLocale(), QLatin1String(expected));
            saveLocale();
            QCOMPARE(InterfaceSettings().value(word("uiLocale")).toString(), QLatin1String(expected));
            QVERIFY(!InterfaceSettings().contains(word("uiLanguage")));
        }
    }

    void translatesOnlyWhatIsNotEnglish()
    {
        for (const char *code : {"en_US", "en_GB", "zh_CN", "xx_XX"}) {
            setCurrentLocale(QLatin1String(code));
            installTranslator();
            QCOMPARE(Velmora::tr("Folder compare") == word("Folder compare"),
                     QLatin1String(code) != QLatin1String("zh_CN"));
            QCOMPARE(QLocale().language(), QLocale(QLatin1String(code)).language()); // of dates and numbers
        }
    }

    void aFileCalledLikeMarkupIsShownByItsName()
    {
        const PlainTexts texts;
        const QString name = word("<b>bold</b>");
        QLabel label(name);
        label.setToolTip(name);
        label.show();
        QVERIFY(QTest::qWaitForWindowExposed(&label));
        QCOMPARE(label.textFormat(), Qt::PlainText);
        QHelpEvent hover(QEvent::ToolTip, {1, 1}, label.mapToGlobal(QPoint(1, 1)));
        QApplication::sendEvent(&label, &hover);
        QCOMPARE(QToolTip::text(), word("<p style='white-space:pre'>&lt;b&gt;bold&lt;/b&gt;</p>"));
        QToolTip::hideText();
    }

    // They began in the folder that the program was started from.
    void savingByABareNameBeginsWhereTheLastFileWent()
    {
        QWidget window;
        QTemporaryDir folder;
        const auto dialog = [&window] {
            Dialogs().saveFile(&window, {}, word("a.txt"), {}, [](const QString &) {});
            return std::unique_ptr<QFileDialog>(window.findChild<QFileDialog *>());
        };
        auto first = dialog();
        QVERIFY(first->directory() != QDir::current());
        Q_EMIT first->fileSelected(folder.filePath(word("b.txt")));
        first.reset();
        const auto next = dialog();
        QCOMPARE(next->selectedFiles(), QStringList{folder.filePath(word("a.txt"))});
    }

    void theToolkitsDialogsAreChineseToo()
    {
        setCurrentLocale(word("zh_CN"));
        installTranslator();
        QFileDialog files;
        files.setOption(QFileDialog::DontUseNativeDialog);
        files.setAcceptMode(QFileDialog::AcceptSave);
        QMessageBox box;
        for (int button = QMessageBox::FirstButton; button <= QMessageBox::LastButton; button *= 2)
            box.addButton(QMessageBox::StandardButton(button));
        QColorDialog colours;
        colours.setOptions(QColorDialog::DontUseNativeDialog | QColorDialog::ShowAlphaChannel);
        const QProgressDialog progress;
        QLineEdit line;
        const std::unique_ptr<QMenu> lineMenu(line.createStandardContextMenu());
        QPlainTextEdit page;
        const std::unique_ptr<QMenu> pageMenu(page.createStandardContextMenu());
        QStringList texts;
        const std::initializer_list<const QObject *> shown = {&files,    &box,           &colours,
                                                              &progress, lineMenu.get(), pageMenu.get()};
        for (const QObject *window : shown) {
            for (const QObject *part : window->findChildren<QObject *>()) {
                for (const char *property : {"text", "toolTip"})
                    texts << part->property(property).toString().section(u'\t', 0, 0); // without keys
            }
        }
        const auto *model = files.findChild<QFileSystemModel *>();
        for (int column = 0; column < model->columnCount(); ++column)
            texts << model->headerData(column, Qt::Horizontal).toString();
        QVERIFY(texts.size() > 60);
        const QRegularExpression letters(word("[A-Za-z]{2}")); // mnemonics are single letters
        texts.removeIf([&letters](const QString &text) { return !text.contains(letters); });
        texts.removeAll(word("HTML(&H)："));
        texts.removeAll(word("#ffffff"));
        QCOMPARE(texts.join(u'|'), QString());
    }

    void choosesTheFontForTheLanguage()
    {
        const QString old = word("Microsoft YaHei");
        const QString current = word("Microsoft YaHei UI");
        const auto family = [](const char *locale, const QStringList &families) {
            return interfaceFont(QLatin1String(locale), families).family();
        };
        QCOMPARE(family("en_US", {old, current}), word("Segoe UI"));
        QCOMPARE(family("zh_CN", {old, current}), current);
        QCOMPARE(family("zh_CN", {old}), old);
        QCOMPARE(family("zh_CN", {}), word("Segoe UI"));
        QCOMPARE(interfaceFont(word("zh_CN"), {old}).pointSize(), 9);
    }

    void theSwitchesOfTheStartAreStored()
    {
        QCOMPARE(applyStartSwitches({}), std::nullopt);
        QVERIFY(!SessionSettings().contains(word("theme")));
        QVERIFY(!InterfaceSettings().contains(word("uiLocale")));

        QCOMPARE(applyStartSwitches({StartSwitches::Theme::Dark, word("zh_CN")}), std::optional(true));
        QVERIFY(isDarkTheme());
        // The theme of one run is not the theme of the options.
        QCOMPARE(SessionSettings().value(word("theme")), QVariant(1));
        QVERIFY(!InterfaceSettings().contains(word("theme")));
        QCOMPARE(InterfaceSettings().value(word("uiLocale")).toString(), word("zh_CN"));
        QVERIFY(Velmora::tr("Folder compare") != word("Folder compare"));

        QCOMPARE(applyStartSwitches({StartSwitches::Theme::Light, QString()}), std::optional(false));
        QVERIFY(!isDarkTheme());
        QCOMPARE(SessionSettings().value(word("theme")).toInt(), 0);
        SessionSettings().clear();
    }

    void dressesTheApplication()
    {
        const QFont before = QApplication::font();
        const QString name = QCoreApplication::applicationName();
        applyTheme(false);
        const QPointer<QStyle> style = QApplication::style();
        dressApplication();
        applyTheme(true);
        QVERIFY(style); // made once
        QCOMPARE(style->styleHint(QStyle::SH_DialogButtonLayout), int(QDialogButtonBox::WinLayout));
        QCOMPARE(QCoreApplication::applicationName(), word("Ostrafen"));
        QCOMPARE(QGuiApplication::applicationDisplayName(), word("Velmora"));
        QCOMPARE(QCoreApplication::applicationVersion(), word("1.0.0"));
        QVERIFY(!QApplication::windowIcon().isNull());
        QCOMPARE(QApplication::font().pointSize(), 9);
        QApplication::setFont(before);
        QCoreApplication::setApplicationName(name);
    }
};

VELMORA_TEST(StartUpTest)
#include "start_up_test.moc"
