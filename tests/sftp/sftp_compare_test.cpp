#include "folder/sftp/sftp_compare_widget.h"
#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/session_record.h"
#include "sftp/local_host.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QJsonObject>
#include <QLabel>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

class SftpCompareTest : public QObject {
    Q_OBJECT

private:
    std::unique_ptr<LocalHost> m_host;
    std::unique_ptr<QTemporaryDir> m_local;
    std::unique_ptr<RecordingHost> m_window;
    std::unique_ptr<SftpCompareWidget> m_session;

    template <typename Part = QAction>
    [[nodiscard]] Part &part(const char *name)
    {
        return *m_session->findChild<Part *>(word(name));
    }
    void trigger(const char *action)
    {
        part(action).trigger();
        QTRY_VERIFY_WITH_TIMEOUT(!m_session->isReading(), 60'000);
    }
    [[nodiscard]] QString message() { return part<QLabel>("statusLabel").text(); }
    void choose(const char *path)
    {
        for (int row = 0; row < m_session->rows().rowCount(); ++row) {
            if (m_session->rows().rowAt(row).key == word(path))
                part<ListView>("listRows").goToRow(row);
        }
    }
    [[nodiscard]] QString statusOf(const char *path)
    {
        choose(path);
        const int row = part<ListView>("listRows").currentIndex().row();
        return m_session->rows().index(row, 0).data().toString();
    }

private Q_SLOTS:
    void initTestCase() { m_host = std::make_unique<LocalHost>(); }
    void init()
    {
        m_local = std::make_unique<QTemporaryDir>();
        m_window = std::make_unique<RecordingHost>();
        m_session = std::make_unique<SftpCompareWidget>(*m_window);
        m_session->resize(800, 600);
        m_session->show();
    }

    void whatIsMissingIsTold()
    {
        trigger("compareAction");
        QCOMPARE(message(), word("Enter host, user, and local folder"));
        m_session->setPaths({m_local->filePath(word("missing")), word("u@h:/x"), {}});
        trigger("compareAction");
        QCOMPARE(message(), word("Local path is not a folder"));
        const QByteArray searchPath = qgetenv("PATH");
        qputenv("PATH", m_local->path().toUtf8());
        m_session->setPaths({m_local->path(), word("u@h:/x"), {}});
        trigger("compareAction");
        qputenv("PATH", searchPath);
        QCOMPARE(message(), word("ssh executable not found"));
    }

    void aRemoteFolderIsCompared()
    {
        if (!m_host->lack().isEmpty())
            QSKIP(qPrintable(m_host->lack()));
        const QByteArray searchPath = qgetenv("PATH");
        qputenv("PATH", m_host->searchPath().toUtf8() + ':' + searchPath);
        const QString folder = m_host->path("there");
        QVERIFY(QDir().mkpath(folder));
        for (const char *name : {"same", "other", "size"})
            QVERIFY(makeFile(folder + u'/' + word(name), "remote") &&
                    makeFile(m_local->filePath(word(name)), "remote"));
        QVERIFY(makeFile(m_local->filePath(word("other")), "locals") &&
                makeFile(m_local->filePath(word("size")), "local"));
        QVERIFY(makeFile(folder + word("/only"), "there"));

        const RemotePlace place = m_host->target(folder).place;
        QSignalSpy titles(m_session.get(), &SessionWidget::tabTitleChanged);
        m_session->setPaths({m_local->path(), place.text(), {}});
        m_session->setOptions({{word("port"), place.port}});
        QCOMPARE(m_session->paths().right, place.text());
        trigger("compareAction");
        QVERIFY2(message().startsWith(word(
                     "Compare finished — 3 local file(s), 4 remote file(s). Double-click a \"Different size\" row")),
                 qPrintable(message()));
        QCOMPARE(titles.value(0).value(0).toString(), word("SFTP ") + place.text());
        QCOMPARE(statusOf("same"), word("Same"));
        QCOMPARE(statusOf("other"), word("Same"));
        QCOMPARE(statusOf("only"), word("Remote only"));
        QCOMPARE(statusOf("size"), word("Different size"));

        trigger("openAction");
        QTRY_COMPARE(m_window->opened.size(), 1);
        const SessionPaths opened = m_window->opened.first().second;
        QCOMPARE(opened.left, m_local->filePath(word("size")));
        QCOMPARE(contentsOf(opened.right), "remote");
        QVERIFY(opened.right.contains(word("/velmora-scp-")));

        part<ListView>("listRows").selectAll();
        trigger("compareContentsAction");
        QCOMPARE(message(), word("Same contents: 1, different: 2"));
        QCOMPARE(part<ListView>("listRows").selectedRows().size(), std::size_t(m_session->rows().rowCount()));
        QCOMPARE(statusOf("other"), word("Different contents"));
        QCOMPARE(statusOf("same"), word("Same contents"));

        ScriptedDialogs dialogs;
        const QTemporaryDir into;
        dialogs.answerPath(into.path());
        choose("only");
        trigger("fetchAction");
        QCOMPARE(message(), word("Files fetched: 1"));
        QCOMPARE(entriesOf(into.path()), words("only"));

        m_session.reset();
        QVERIFY(!QFileInfo::exists(opened.right));
        qputenv("PATH", searchPath);
    }
};

VELMORA_TEST(SftpCompareTest)
#include "sftp_compare_test.moc"
