#include "app/desktop/desktop_menu.h"
#include "app/desktop/shell_menu.h"
#include "platform/desktop_integration.h"
#include "support/files.h"
#include "support/test_main.h"

#include <QDirIterator>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

using namespace velmora;
using velmora::test::word;
using velmora::test::words;

namespace {

/// Everything below a folder: paths, and what stands in the files.
QMap<QString, QByteArray> contentsOf(const QString &folder)
{
    QMap<QString, QByteArray> result;
    QDirIterator it(folder, QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        const bool readable = it.fileInfo().isFile() && file.open(QIODevice::ReadOnly);
        result.insert(QDir(folder).relativeFilePath(it.filePath()), readable ? file.readAll() : QByteArray("folder"));
    }
    return result;
}

/// The value of a key in the section that holds it first.
QString valueOf(const QByteArray &entry, const char *key)
{
    for (const QByteArray &line : entry.split('\n')) {
        if (line.startsWith(QByteArray(key) + '='))
            return QString::fromUtf8(line.mid(qstrlen(key) + 1));
    }
    return {};
}

/// Reads an Exec value as desktops do: the escapes of values first, then the quotes, then the field codes.
QStringList commandOf(const QString &value)
{
    QString text;
    for (qsizetype i = 0; i < value.size(); ++i) {
        if (value[i] != u'\\') {
            text += value[i];
            continue;
        }
        const QChar c = value[++i];
        text += c == u'n' ? u'\n' : c == u't' ? u'\t' : c == u's' ? u' ' : c;
    }
    QStringList command;
    QString word;
    bool quoted = false;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] == u'"')
            quoted = !quoted;
        else if (text[i] == u' ' && !quoted)
            command.append(std::exchange(word, {}));
        else if (text[i] == u'\\' && quoted)
            word += text[++i];
        else if (text[i] == u'%' && text.mid(i + 1, 1) == QLatin1String("%"))
            word += text[i++];
        else
            word += text[i];
    }
    return command << word;
}

} // namespace

class DesktopMenuTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        if (desktopDataFolder().isEmpty())
            QSKIP("this system's desktop reads no such files");
    }

    void init()
    {
        m_home = std::make_unique<QTemporaryDir>();
        QVERIFY(m_home->isValid());
    }

    void leavesNothingBehind()
    {
        const ShellMenu menu = desktopShellMenu(m_home->path());
        QVERIFY(!menu.isRegistered());
        QVERIFY(menu.registerMenu(word("/opt/velmora")));
        QVERIFY(menu.isRegistered());
        QVERIFY(contentsOf(m_home->path()).size() > 10);
        // Once more, as after the program has moved.
        QVERIFY(menu.registerMenu(word("/usr/local/bin/velmora")));
        QVERIFY(menu.unregisterMenu());
        QVERIFY(!menu.isRegistered());
        QCOMPARE(contentsOf(m_home->path()), (QMap<QString, QByteArray>()));
    }

    void leavesWhatOthersHave()
    {
        QDir home(m_home->path());
        const auto write = [&home](const char *path, const char *text) {
            home.mkpath(QFileInfo(QLatin1String(path)).path());
            QFile file(home.filePath(QLatin1String(path)));
            return file.open(QIODevice::WriteOnly) && file.write(text) > 0;
        };
        QVERIFY(home.mkpath(word("nemo/actions"))); // empty, and to stay so
        QVERIFY(write("applications/other.desktop", "[Desktop Entry]\nType=Application\nName=Other\nExec=other\n"));
        QVERIFY(write("nautilus/scripts/mine", "#!/bin/sh\n"));
        const QMap<QString, QByteArray> before = contentsOf(m_home->path());
        const ShellMenu menu = desktopShellMenu(m_home->path());
        QVERIFY(menu.registerMenu(word("/opt/velmora")));
        QVERIFY(write("nautilus/scripts/later", "#!/bin/sh\n"));
        QVERIFY(menu.unregisterMenu());
        QMap<QString, QByteArray> after = contentsOf(m_home->path());
        after.remove(word("applications/mimeinfo.cache")); // the tools' index of the other entries
        QVERIFY(after.remove(word("nautilus/scripts/later")));
        QCOMPARE(after, before);
    }

    void isWholeOrNotAtAll()
    {
        QFile inTheWay(m_home->filePath(word("nemo")));
        QVERIFY(inTheWay.open(QIODevice::WriteOnly));
        inTheWay.close();
        const ShellMenu menu = desktopShellMenu(m_home->path());
        QVERIFY(!menu.registerMenu(word("/opt/velmora")));
        QVERIFY(!menu.isRegistered());
        QCOMPARE(contentsOf(m_home->path()).keys(), words("nemo"));
    }

    void quotesTheProgram()
    {
        for (const char *path : {"/opt/velmora", "/home/a b/velmora", "/100%/%f/velmora", "/a\"b`c$d\\e/velmora",
                                 "/it's/velmora", "/two\nlines\tand/velmora", "/\xe4\xb8\xad\xe6\x96\x87/velmora"}) {
            int entries = 0;
            for (const DesktopFile &file : desktopMenuFiles(word(path))) {
                const QString exec = valueOf(file.contents, "Exec");
                if (exec.isEmpty() || exec.startsWith(u'<'))
                    continue;
                ++entries;
                QCOMPARE(commandOf(exec).constFirst(), word(path));
            }
            QCOMPARE(entries, 5);
        }
    }

    void scriptsHandTheFileOver()
    {
        if (QStandardPaths::findExecutable(word("sh")).isEmpty())
            QSKIP("no shell");
        // A program of a difficult name that says what it was given.
        const QString program = m_home->filePath(word("it's $HOME \"quoted\""));
        QFile script(program);
        QVERIFY(script.open(QIODevice::WriteOnly));
        script.write("#!/bin/sh\nprintf '%s|' \"$@\"\n");
        script.close();
        QVERIFY(script.setPermissions(QFile::ReadOwner | QFile::ExeOwner | QFile::WriteOwner));
        QVERIFY(desktopShellMenu(m_home->path()).registerMenu(program));
        int scripts = 0;
        for (const DesktopFile &file : desktopMenuFiles(program)) {
            if (!file.contents.startsWith("#!"))
                continue;
            ++scripts;
            QProcess process;
            process.start(m_home->filePath(file.path), {word("-a file's $name")});
            QVERIFY(process.waitForFinished());
            const QByteArray side = file.path.contains(QLatin1String("right")) ? "right" : "left";
            QCOMPARE(process.readAllStandardOutput(), "--as-" + side + "|-a file's $name|");
        }
        QCOMPARE(scripts, 4);
    }

    void theEntriesAreValid()
    {
        const QString validate = QStandardPaths::findExecutable(word("desktop-file-validate"));
        if (validate.isEmpty())
            QSKIP("desktop-file-validate is not installed");
        QVERIFY(desktopShellMenu(m_home->path()).registerMenu(word("/opt/a b/velmora")));
        for (const char *name : {"applications/velmora.desktop", "applications/velmora-workspace.desktop"}) {
            QProcess process;
            process.setProcessChannelMode(QProcess::MergedChannels);
            process.start(validate, {m_home->filePath(QLatin1String(name))});
            QVERIFY(process.waitForFinished());
            QCOMPARE(process.readAll(), QByteArray());
        }
    }

private:
    std::unique_ptr<QTemporaryDir> m_home;
};

VELMORA_TEST(DesktopMenuTest)
#include "desktop_menu_test.moc"
