#include "folder/engine/folder_report.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QBuffer>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The report on one side named "/a&b" and the other "/<c> %2"; empty when it was not written.
QByteArray report(const QList<FolderDiffItem> &items, QIODevice::OpenMode mode, const CancelFlag &cancel = {})
{
    const FolderReportLabels labels{word("T — t"),
                                    word("Heading"),
                                    word("Left: /a&b"),
                                    word("Right: /<c> %2"),
                                    word("Generated at"),
                                    {word("N"), word("S"), word("Ls"), word("Rs"), word("Lm"), word("Rm")},
                                    {word("Same"), word("Left only"), word("Right only"), word("Different")},
                                    word("Total: %1 | Same: %2 | Different: %3 | Left only: %4 | Right only: %5"),
                                    word("not read"),
                                    word("Not read: %1")};
    QBuffer buffer;
    buffer.open(mode);
    const QDateTime time(QDate(2024, 3, 4), QTime(5, 6, 7));
    return writeFolderReport(buffer, items, labels, time, cancel) ? buffer.data() : QByteArray();
}

} // namespace

class FolderReportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesThePageAsItIsLaidOut()
    {
        const QDateTime time(QDate(2024, 2, 29), QTime(23, 5));
        const QList<FolderDiffItem> items{
            {word("both"), word("/l"), word("/r"), 3, 1234567, 5, time, time.addSecs(60), true},
            {word("both/%1 & <x>.txt"), word("/l/x"), {}, 1, 999, 0, time.toUTC(), {}, false},
            {word("both/new"), {}, word("/r/new"), 2, 0, 0, {}, time, false},
            {word("same"), word("/l/same"), word("/r/same"), 0, 1000, 1000, time, time, false},
        };
        QCOMPARE(report(items, QIODevice::WriteOnly),
                 contentsOf(word(VELMORA_SOURCE_DIR "/tests/folder_engine/cases/report.html")));
    }

    void tellsWhatNobodyHasRead()
    {
        FolderDiffItem item{word("f"), word("/l/f"), word("/r/f"), 0, 1, 1, {}, {}, false};
        QVERIFY(!report({item}, QIODevice::WriteOnly).contains("ot read"));
        item.isUnread = true;
        const QByteArray page = report({item}, QIODevice::WriteOnly);
        QVERIFY(page.contains("<span class=\"tag tag-equal\">Same</span> not read</td>"));
        QVERIFY(page.contains("Same: 1 |") && page.contains("<div class=\"summary\">Not read: 1</div>\n</body>"));
    }

    void saysWhenThePageIsNotWritten()
    {
        const QList<FolderDiffItem> items(1, FolderDiffItem());
        QTest::ignoreMessage(QtWarningMsg, "QIODevice::write (QBuffer): ReadOnly device");
        QCOMPARE(report(items, QIODevice::ReadOnly), QByteArray());
        const CancelFlag cancel;
        cancel.cancel();
        QCOMPARE(report(items, QIODevice::WriteOnly, cancel), QByteArray());
    }
};

VELMORA_TEST(FolderReportTest)
#include "folder_report_test.moc"
