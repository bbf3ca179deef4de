#include "app/desktop/explorer_menu.h"
#include "app/desktop/shell_menu.h"
#include "app/help/key_list_dialog.h"
#include "app/options/options_dialog.h"
#include "app/scripted_dialogs.h"
#include "app/start/locale.h"
#include "app/window/tarnwick.h"
#include "core/settings_store.h"
#include "platform/user_registry.h"
#include "session/folder_colours.h"
#include "session/pane/text_appearance.h"
#include "session/theme.h"
#include "support/contrast.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QMenuBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QSpinBox>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>

using namespace velmora;
using velmora::test::word;

namespace {

/// A registry in memory, which may refuse one key.
class MemoryRegistry final : public UserRegistry {
public:
    bool contains(const QString &key) const override { return values.contains(key); }

    bool setString(const QString &key, const QString &name, const QString &value) override
    {
        if (key == refused)
            return false;
        values[key][name] = value;
        return true;
    }

    void removeTree(const QString &key) override
    {
        values.removeIf(
            [&key](const auto &entry) { return entry.key() == key || entry.key().startsWith(key + u'\\'); });
    }

    QMap<QString, QMap<QString, QString>> values;
    QString refused;
};

/// The options over a theme that follows them, as it does in the main window.
struct OpenOptions {
    explicit OpenOptions(bool dark) : dialog(dark, registryShellMenu(registry))
    {
        applyTheme(dark);
        QObject::connect(&dialog, &OptionsDialog::themeChosen, &dialog, [](bool chosen) { applyTheme(chosen); });
        dialog.show();
    }

    template <typename Widget>
    Widget *control(const char *name) const
    {
        return dialog.findChild<Widget *>(QLatin1String(name));
    }

    void apply() const { control<QPushButton>("optionsApply")->click(); }
    void cancel() const { control<QPushButton>("optionsCancel")->click(); }

    MemoryRegistry registry;
    OptionsDialog dialog;
};

} // namespace

class OptionsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { InterfaceSettings().clear(); }

    void cleanup()
    {
        applyTheme(false);
        setCurrentLocale({});
        installTranslator();
        InterfaceSettings().clear();
        SessionSettings().clear();
    }

    void previewsAThemeAndTakesItBack()
    {
        const OpenOptions options(false);
        options.control<QComboBox>("optionTheme")->setCurrentIndex(1);
        QVERIFY(isDarkTheme());
        options.cancel();
        QVERIFY(!isDarkTheme());
        QVERIFY(!options.dialog.isVisible());
        QVERIFY(!InterfaceSettings().contains(word("theme")));
    }

    void storesThemeAndLanguage()
    {
        ScriptedDialogs dialogs;
        const OpenOptions options(true);
        QCOMPARE(options.control<QComboBox>("optionTheme")->currentText(), word("Dark"));
        options.control<QComboBox>("optionTheme")->setCurrentIndex(0);
        auto *language = options.control<QComboBox>("optionLanguage");
        QCOMPARE(language->itemText(0), word("English"));
        QCOMPARE(language->currentData().toString(), word("en_US"));
        language->setCurrentIndex(1);
        options.control<QSpinBox>("optionTabWidth")->setValue(3);
        options.apply();
        QCOMPARE(TextAppearance::load().tabWidth, 3);
        QVERIFY(!isDarkTheme());
        QVERIFY(!options.dialog.isVisible());
        QCOMPARE(InterfaceSettings().value(word("theme")).toInt(), 0);
        QCOMPARE(InterfaceSettings().value(word("uiLocale")).toString(), word("zh_CN"));
        QCOMPARE(dialogs.said.size(), 1);
        QCOMPARE(currentLocale(), word("zh_CN"));

        // Nothing is told when the language stays.
        const OpenOptions again(false);
        again.apply();
        setCurrentLocale(word("en_GB")); // which is not on offer
        const OpenOptions elsewhere(false);
        elsewhere.apply();
        QCOMPARE(currentLocale(), word("en_GB"));
        QCOMPARE(dialogs.said.size(), 1);
    }

    void listsTheKeysOfAllCommandsAndFindsThem()
    {
        Tarnwick window;
        const QList<KeyGroup> groups = collectKeys(*window.menuBar(), window);
        const auto keysOf = [&groups](const QString &title, const QString &command) {
            for (const KeyGroup &group : groups) {
                for (const KeyEntry &entry : group.entries) {
                    if (group.title.contains(title) && entry.command == command)
                        return entry.keys;
                }
            }
            return QString();
        };
        QCOMPARE(keysOf(word("Everywhere"), word("New tab")), word("Ctrl+T"));
        QCOMPARE(keysOf(word("Everywhere"), word("Sessions panel")), word("Ctrl+Shift+P"));
        // A command has the same keys in every session, which may give it some of its own beside them.
        for (const QString &title : {word("Text compare"), word("Folder compare"), word("Services")}) {
            QCOMPARE(keysOf(title, word("Next")), word("F8, Alt+Down"));
            QVERIFY(keysOf(title, word("All")).startsWith(word("Ctrl+Shift+A, Alt+1")));
        }
        for (const KeyGroup &group : groups) { // a key with two meanings would have none
            QStringList keys;
            for (const KeyEntry &entry : group.entries) {
                for (const QString &key : entry.keys.split(word(", "))) {
                    QVERIFY2(!keys.contains(key),
                             qPrintable(QStringLiteral("%1: %2 %3").arg(group.title, key, entry.command)));
                    keys.append(key);
                }
            }
        }

        KeyListDialog dialog(groups);
        dialog.findChild<QLineEdit *>(word("keySearch"))->setText(word("alt+down"));
        auto *list = dialog.findChild<QTreeWidget *>(word("keyList"));
        QStringList shown;
        for (QTreeWidgetItemIterator item(list, QTreeWidgetItemIterator::NotHidden); *item; ++item)
            shown.append((*item)->text(1));
        shown.removeAll(QString());
        QVERIFY(shown.size() >= 2);
        for (const QString &keys : std::as_const(shown))
            QVERIFY(keys.contains(word("Alt+Down")));
    }

    void switchesTheExplorerMenu()
    {
        ScriptedDialogs dialogs;
        OpenOptions options(false);
        auto *check = options.control<QCheckBox>("optionExplorer");
        QVERIFY(check->isEnabled() && !check->isChecked());
        check->setChecked(true);
        options.apply();
        QCOMPARE(options.registry.values.size(), 8);
        QVERIFY(isExplorerMenuRegistered(options.registry));
        check->setChecked(false);
        options.apply();
        QVERIFY(options.registry.values.isEmpty());
        QVERIFY(dialogs.said.isEmpty());

        options.dialog.show();
        options.registry.refused = word("Software\\Classes\\Directory\\shell\\VelmoraAsLeft");
        check->setChecked(true);
        options.apply();
        QCOMPARE(dialogs.said,
                 QStringList{QStringLiteral("Registration failed: Cannot register the Explorer context menu. "
                                            "Check permissions and the executable path.")});
        QVERIFY(check->isChecked() && options.dialog.isVisible());
        const OptionsDialog nothingToSwitch(false, {});
        QVERIFY(!nothingToSwitch.findChild<QCheckBox *>(word("optionExplorer"))->isEnabled());
    }

    void writesTheExplorerVerbs()
    {
        MemoryRegistry registry;
        QVERIFY(!isExplorerMenuRegistered(registry));
        QVERIFY(registerExplorerMenu(registry, word("/opt/velmora")));
        QStringList lines;
        for (auto key = registry.values.constBegin(); key != registry.values.constEnd(); ++key) {
            for (auto value = key->constBegin(); value != key->constEnd(); ++value)
                lines.append(word("%1|%2|%3").arg(key.key(), value.key(), value.value()));
        }
        QString expected;
        for (const QString &root : {word("*"), word("Directory")}) {
            expected += QString::fromUtf8(R"(
Software\Classes\ROOT\shell\VelmoraAsLeft||用 Velmora 选为比较左侧
Software\Classes\ROOT\shell\VelmoraAsLeft|Icon|PROGRAM,0
Software\Classes\ROOT\shell\VelmoraAsLeft\command||"PROGRAM" --as-left "%1"
Software\Classes\ROOT\shell\VelmoraAsRight||用 Velmora 选为比较右侧
Software\Classes\ROOT\shell\VelmoraAsRight|Icon|PROGRAM,0
Software\Classes\ROOT\shell\VelmoraAsRight\command||"PROGRAM" --as-right "%1")")
                            .replace(QLatin1String("ROOT"), root);
        }
        expected.replace(QLatin1String("PROGRAM"), QDir::toNativeSeparators(word("/opt/velmora")));
        QCOMPARE(lines.join(u'\n'), expected.trimmed());
    }

    void folderMarksAreReadable()
    {
        for (const bool dark : {false, true}) {
            const QColor background = dark ? QColor(35, 35, 35) : QColor(Qt::white);
            for (int k = 0; k < folderMarkCount; ++k) {
                const QColor ink = folderMarkColour(FolderMark(k), dark);
                QVERIFY2(test::contrast(ink, background) >= 4.5, qPrintable(ink.name()));
            }
        }
    }
};

VELMORA_TEST(OptionsTest)
#include "options_test.moc"
