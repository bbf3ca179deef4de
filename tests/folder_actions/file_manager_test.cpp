#include "platform/file_manager.h"
#include "support/test_main.h"

#include <QFile>
#include <QSysInfo>
#include <QTemporaryDir>

using namespace velmora;

/// With programs of its own in the place of the system's.
class FileManagerTest : public QObject {
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        if (QSysInfo::kernelType() == QLatin1String("winnt"))
            QSKIP("the system's file manager is the only one");
        m_path = qgetenv("PATH");
        m_bin = std::make_unique<QTemporaryDir>();
        qputenv("PATH", m_bin->path().toUtf8() + ":/bin:/usr/bin");
    }
    void cleanup()
    {
        if (!m_path.isEmpty())
            qputenv("PATH", m_path);
    }

    void theFileIsShownByTheInterfaceOfFileManagers()
    {
        program("dbus-send", "exit 0");
        program("xdg-open", "exit 0");
        showInFileManager(QStringLiteral("/a b/x,y%1.txt"), *this, [] { QFAIL("must not fail"); });
        QTRY_VERIFY(calls("dbus-send").contains("array:string:file:///a%20b/x%2Cy%251.txt"));
        QVERIFY(calls("dbus-send").contains("org.freedesktop.FileManager1.ShowItems"));
        QVERIFY(calls("xdg-open").isEmpty());
    }

    void elseItsFolderIsOpened()
    {
        program("dbus-send", "exit 1");
        program("xdg-open", "exit 0");
        showInFileManager(QStringLiteral("/a b/x.txt"), *this, [] { QFAIL("must not fail"); });
        QTRY_COMPARE(calls("xdg-open"), QByteArray("/a b\n"));
    }

    void thatThereIsNoneIsTold()
    {
        qputenv("PATH", m_bin->path().toUtf8());
        bool failed = false;
        showInFileManager(QStringLiteral("/a/x.txt"), *this, [&failed] { failed = true; });
        QVERIFY(!failed); // not before the function has returned
        QTRY_VERIFY(failed);
    }

private:
    void program(const char *name, const QByteArray &end)
    {
        QFile file(m_bin->filePath(QLatin1String(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
        // Written beside and renamed, so that nobody reads half of it.
        const QByteArray log = m_bin->filePath(QLatin1String(name) + QLatin1String(".log")).toUtf8();
        file.write("#!/bin/sh\nprintf '%s\\n' \"$@\" > '" + log + ".new'\nmv '" + log + ".new' '" + log + "'\n" + end +
                   '\n');
        file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    }

    [[nodiscard]] QByteArray calls(const char *name) const
    {
        QFile file(m_bin->filePath(QLatin1String(name) + QLatin1String(".log")));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    QByteArray m_path;
    std::unique_ptr<QTemporaryDir> m_bin;
};

VELMORA_TEST(FileManagerTest)
#include "file_manager_test.moc"
