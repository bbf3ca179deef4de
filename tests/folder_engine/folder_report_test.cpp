#include "folder/engine/folder_report.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QBuffer>
#include <QCryptographicHash>

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
                                    word("Total: %1 | Same: %2 | Different: %3 | Left only: %4 | Right only: %5")};
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
        QByteArray page = report(items, QIODevice::WriteOnly);
        const qsizetype style = page.indexOf("<style>\n") + 8;
        const QByteArray rules = page.mid(style, page.indexOf("</style>") - style);
        QCOMPARE(rules.count('\n'), 17);
        QCOMPARE(QCryptographicHash::hash(rules, QCryptographicHash::Md5).toHex(),
                 QByteArray("5d2bb7906401748c11383ad7a8bcea90"));
        QCOMPARE(page.remove(style, rules.size()),
                 "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n<title>T — t</title>\n"
                 "<style>\n</style>\n</head>\n<body>\n<h1>Heading</h1>\n"
                 "<div class=\"info\">Left: /a&amp;b<br>Right: /&lt;c&gt; %2<br>Generated at: 2024-03-04 05:06:07"
                 "</div>\n<table>\n"
                 "<tr><th>N</th><th>S</th><th>Ls</th><th>Rs</th><th>Lm</th><th>Rm</th></tr>\n"
                 "<tr class=\"status-modified\"><td>📁 both</td>"
                 "<td><span class=\"tag tag-modified\">Different</span></td>"
                 "<td>1,234,567</td><td>5</td><td>2024/02/29 23:05</td><td>2024/02/29 23:06</td></tr>\n"
                 "<tr class=\"status-leftonly\"><td>📄 both/%1 &amp; &lt;x&gt;.txt</td>"
                 "<td><span class=\"tag tag-leftonly\">Left only</span></td>"
                 "<td>999</td><td>-</td><td>2024/02/29 23:05</td><td>-</td></tr>\n"
                 "<tr class=\"status-rightonly\"><td>📄 both/new</td>"
                 "<td><span class=\"tag tag-rightonly\">Right only</span></td>"
                 "<td>-</td><td>0</td><td>-</td><td>2024/02/29 23:05</td></tr>\n"
                 "<tr class=\"status-equal\"><td>📄 same</td><td><span class=\"tag tag-equal\">Same</span></td>"
                 "<td>1,000</td><td>1,000</td><td>2024/02/29 23:05</td><td>2024/02/29 23:05</td></tr>\n</table>\n"
                 "<div class=\"summary\">Total: 4 | Same: 1 | Different: 1 | Left only: 1 | Right only: 1</div>\n"
                 "</body>\n</html>\n");
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
