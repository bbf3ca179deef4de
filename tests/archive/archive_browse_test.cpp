#include "archive/made_archive.h"
#include "folder/browse/archive_browse_widget.h"
#include "folder/browse/archive_view.h"
#include "folder/browse/entry_preview.h"
#include "session/list/tree_view.h"
#include "session/pane/pane_view.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QBuffer>
#include <QDir>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStackedWidget>
#include <QTemporaryDir>

using namespace velmora;
using namespace velmora::test;

namespace {

class BrowseFixture {
public:
    BrowseFixture() : session(host) { session.resize(1100, 600); }

    [[nodiscard]] QString put(const char *name, const QByteArray &bytes) const
    {
        QFile file(folder.filePath(QString::fromLatin1(name)));
        return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() ? file.fileName() : QString();
    }
    void open(const QString &path)
    {
        session.setPaths({path, {}, {}});
        session.start();
        QTRY_VERIFY_WITH_TIMEOUT(!session.isReading(), 20000);
    }
    [[nodiscard]] QString status() const { return part<QLabel>("statusLabel")->text(); }
    void press(const char *button) const { part<QPushButton>(button)->click(); }
    [[nodiscard]] qint32 row(const char *path) const { return session.listing()->find(QString::fromLatin1(path)); }
    [[nodiscard]] TreeModel &problems() const
    {
        return static_cast<TreeModel &>(*part<TreeView>("archiveProblems")->model());
    }
    template <typename Widget>
    [[nodiscard]] Widget *part(const char *name) const
    {
        return session.findChild<Widget *>(QString::fromLatin1(name));
    }

    QTemporaryDir folder;
    ScriptedDialogs dialogs;
    RecordingHost host;
    ArchiveBrowseWidget session;
};

QByteArray png()
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    QImage image(30, 20, QImage::Format_RGB32);
    image.fill(Qt::red);
    image.save(&buffer, "PNG");
    return bytes;
}

} // namespace

class ArchiveBrowseTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theTreeSaysWhatEachEntryIs()
    {
        BrowseFixture f;
        auto files = plainFiles;
        files.append({"in.tar", packed({{"deep", "1"}}, "ustar")});
        f.open(f.put("a.zip", packed(files, "zip")));
        auto &rows = static_cast<TreeModel &>(*f.part<TreeView>("archiveTree")->model());
        f.session.view().setAllExpanded(true);
        QStringList shown;
        for (int row = 0; row < rows.rowCount(); ++row)
            shown.append(rows.index(row, ArchiveRows::Name).data().toString());
        QCOMPARE(shown.join(u','), QStringLiteral("docs,deep,b.bin,a.txt,in.tar,deep,empty,link → docs/a.txt"));
        QCOMPARE(rows.index(2, ArchiveRows::Checksum).data().toString().size(), 8);
        QCOMPARE(rows.index(2, ArchiveRows::Ratio).data().toString(), QStringLiteral("0%"));
        QCOMPARE(rows.index(2, ArchiveRows::Mode).data().toString(), QStringLiteral("-rw-r--r--"));
        QCOMPARE(f.session.listing()->row(0).size, 300'006);
        f.part<QLineEdit>("archiveFilter")->setText(QStringLiteral("B.BIN"));
        QTRY_COMPARE(rows.rowCount(), 3);
        f.open(f.put("text", "no archive"));
        QVERIFY2(f.status().contains(QLatin1String("Neither an archive")), qPrintable(f.status()));
        QCOMPARE(rows.rowCount(), 3); // a failure leaves what was there
    }

    void entriesAreShownAsWhatTheyAre()
    {
        BrowseFixture f;
        f.open(f.put("a.tgz", packed({{"a.txt", "alpha\nbeta\n"}, {"b", QByteArray("\0\1ABC", 5)}, {"c", png()}}, "pax",
                                     "gzip")));
        const auto *views = f.session.findChild<QStackedWidget *>();
        auto *text = f.part<PaneView>("previewText");
        f.session.view().goToRow(f.row("/a.txt"));
        QTRY_VERIFY(views->currentWidget() == text && text->scene().document());
        QCOMPARE(text->scene().document()->text(1, 0), QStringLiteral("beta"));
        f.session.view().goToRow(f.row("/b"));
        QTRY_VERIFY(text->scene().document()->text(0, 0).contains(QLatin1String("00 01 41 42 43")));
        QVERIFY(text->scene().document()->text(0, 0).endsWith(QLatin1String("..ABC")));
        f.session.view().goToRow(f.row("/c"));
        QTRY_COMPARE(views->currentWidget()->objectName(), QStringLiteral("previewPicture"));
        QVERIFY(f.part<QLabel>("previewHead")->text().contains(QStringLiteral("30 × 20")));
        f.session.onOpenEntry();
        QTRY_COMPARE(f.host.opened.size(), 1);
        QVERIFY(QFile::exists(f.host.opened.first().second.left));
    }

    void entriesAreCopiedOut()
    {
        BrowseFixture f;
        f.open(f.put("a.tar", packed(plainFiles, "pax")));
        const QString target = f.folder.filePath(QStringLiteral("target"));
        QVERIFY(QDir().mkpath(target));
        f.session.view().goToRow(f.row("/docs/deep"));
        f.dialogs.answerPath(target);
        f.press("extractButton");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(target + QStringLiteral("/deep/b.bin")), 10000);
        QVERIFY(!QFile::exists(target + QStringLiteral("/docs")));
        QTRY_VERIFY(f.part<QPushButton>("extractAllButton")->isEnabled());
        f.dialogs.answerPath(target);
        f.press("extractAllButton");
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(target + QStringLiteral("/docs/a.txt")), 10000);
    }

    void aTestNamesWhatCannotBeRead()
    {
        BrowseFixture f;
        QByteArray zip = packed({{"a", QByteArray(5000, 'x')}, {"b", "1"}}, "zip");
        f.open(f.put("whole.zip", zip));
        f.press("testButton");
        QTRY_VERIFY2(f.status().contains(QLatin1String("All files can be read")), qPrintable(f.status()));
        QVERIFY(f.part<TreeView>("archiveProblems")->isHidden());
        const qsizetype data = 30 + zip.at(26) + zip.at(28); // behind the header of the entry
        zip[data + 2] = char(zip.at(data + 2) ^ 0x55);
        f.open(f.put("changed.zip", zip));
        f.press("testButton");
        QTRY_VERIFY2(f.status().contains(QLatin1String("whole: 1 of 2")), qPrintable(f.status()));
        QCOMPARE(f.problems().rowCount(), 1);
        auto &rows = static_cast<TreeModel &>(*f.part<TreeView>("archiveTree")->model());
        const auto &marked = static_cast<const ArchiveRows &>(rows.rowTree());
        QVERIFY(marked.hasFailed(f.row("/a")) && !marked.hasFailed(f.row("/b")));
        f.open(f.put("cut.tgz", packed(plainFiles, "ustar", "gzip").first(300)));
        QVERIFY(f.problems().rowCount() > 0);
        f.press("testButton");
        QTRY_VERIFY2(!f.session.isReading() && f.status().contains(QLatin1String("cannot be read whole: ")),
                     qPrintable(f.status()));
    }

    void aPasswordIsAskedForOnce()
    {
        BrowseFixture f;
        const QString path = f.put("secret.zip", packed({{"a", "secret"}}, "zip", "none", "word"));
        f.dialogs.answerText(QStringLiteral("sword"));
        f.open(path);
        QTRY_VERIFY2(f.status().contains(QLatin1String("does not open")), qPrintable(f.status()));
        f.dialogs.answerText(QStringLiteral("word"));
        f.session.onPassword();
        QTRY_COMPARE(f.status(), QStringLiteral("Ready"));
        f.press("testButton");
        QTRY_VERIFY2(f.status().contains(QLatin1String("All files")), qPrintable(f.status()));
        f.open(path);
        QCOMPARE(f.dialogs.asked().size(), 2);
    }
};

VELMORA_TEST(ArchiveBrowseTest)
#include "archive_browse_test.moc"
