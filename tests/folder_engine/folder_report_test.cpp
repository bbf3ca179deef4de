#include "folder/engine/folder_report.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QBuffer>

using namespace velmora;
using namespace velmora::test;

namespace {

FolderReportLabels labels(const QString &left, const QString &right)
{
    return {QStringLiteral("Velmora — folder diff report"),
            QStringLiteral("Velmora folder diff report"),
            QLatin1String("Left: ") + left,
            QLatin1String("Right: ") + right,
            QStringLiteral("Generated at"),
            {QStringLiteral("Name"), QStringLiteral("Status"), QStringLiteral("Left size"),
             QStringLiteral("Right size"), QStringLiteral("Left modified"), QStringLiteral("Right modified")},
            {QStringLiteral("Same"), QStringLiteral("Left only"), QStringLiteral("Right only"),
             QStringLiteral("Different")},
            QStringLiteral("Total: %1 items | Same: %2 | Different: %3 | Left only: %4 | Right only: %5")};
}

QByteArray report(const QList<FolderDiffItem> &items, const QString &left, const QString &right)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    const QDateTime time(QDate(2024, 3, 4), QTime(5, 6, 7));
    return writeFolderReport(buffer, items, labels(left, right), time) ? buffer.data() : QByteArray();
}

} // namespace

class FolderReportTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void writesThePageAsItIsLaidOut()
    {
        const QDateTime time(QDate(2024, 2, 29), QTime(23, 5));
        const QList<FolderDiffItem> items{
            {QStringLiteral("both"), QStringLiteral("/l/both"), QStringLiteral("/r/both"), 3, 1234567, 5, time,
             time.addSecs(60), true},
            {QStringLiteral("both/%1 & <x>.txt"), QStringLiteral("/l/x"), {}, 1, 999, 0, time.toUTC(), {}, false},
            {QStringLiteral("both/new"), {}, QStringLiteral("/r/new"), 2, 0, 0, {}, time, false},
            {QStringLiteral("same"), QStringLiteral("/l/same"), QStringLiteral("/r/same"), 0, 1000, 1000, time, time,
             false},
        };
        const QByteArray expected =
            "<!DOCTYPE html>\n<html>\n<head>\n<meta charset=\"utf-8\">\n"
            "<title>Velmora — folder diff report</title>\n<style>\n"
            "body { font-family: 'Segoe UI', 'Microsoft YaHei', sans-serif; font-size: 13px; margin: 20px; }\n"
            "h1 { font-size: 20px; color: #333; margin-bottom: 8px; }\n"
            ".info { font-size: 13px; color: #555; margin-bottom: 16px; line-height: 1.6; }\n"
            "table { border-collapse: collapse; width: 100%; }\n"
            "th { background: #e8e8e8; padding: 8px 10px; text-align: left; border: 1px solid #ccc; font-size: 13px; "
            "}\n"
            "td { padding: 5px 10px; border: 1px solid #ddd; font-size: 12px; }\n"
            ".status-equal { color: #888; }\n"
            ".status-modified { background: #fff3cd; }\n"
            ".status-leftonly { background: #f2dede; }\n"
            ".status-rightonly { background: #dff0d8; }\n"
            ".summary { margin-top: 16px; font-size: 13px; color: #333; }\n"
            ".summary span { margin-right: 20px; }\n"
            ".tag { display: inline-block; padding: 2px 8px; border-radius: 3px; font-size: 11px; font-weight: bold; "
            "}\n"
            ".tag-equal { background: #eee; color: #888; }\n"
            ".tag-modified { background: #f0ad4e; color: #fff; }\n"
            ".tag-leftonly { background: #d9534f; color: #fff; }\n"
            ".tag-rightonly { background: #5cb85c; color: #fff; }\n"
            "</style>\n</head>\n<body>\n"
            "<h1>Velmora folder diff report</h1>\n"
            "<div class=\"info\">Left: /a&amp;b<br>Right: /&lt;c&gt; %2<br>Generated at: 2024-03-04 05:06:07</div>\n"
            "<table>\n"
            "<tr><th>Name</th><th>Status</th><th>Left size</th><th>Right size</th><th>Left modified</th>"
            "<th>Right modified</th></tr>\n"
            "<tr class=\"status-modified\"><td>📁 both</td><td><span class=\"tag tag-modified\">Different</span></td>"
            "<td>1,234,567</td><td>5</td><td>2024/02/29 23:05</td><td>2024/02/29 23:06</td></tr>\n"
            "<tr class=\"status-leftonly\"><td>📄 both/%1 &amp; &lt;x&gt;.txt</td>"
            "<td><span class=\"tag tag-leftonly\">Left only</span></td>"
            "<td>999</td><td>-</td><td>2024/02/29 23:05</td><td>-</td></tr>\n"
            "<tr class=\"status-rightonly\"><td>📄 both/new</td>"
            "<td><span class=\"tag tag-rightonly\">Right only</span></td>"
            "<td>-</td><td>0</td><td>-</td><td>2024/02/29 23:05</td></tr>\n"
            "<tr class=\"status-equal\"><td>📄 same</td><td><span class=\"tag tag-equal\">Same</span></td>"
            "<td>1,000</td><td>1,000</td><td>2024/02/29 23:05</td><td>2024/02/29 23:05</td></tr>\n"
            "</table>\n"
            "<div class=\"summary\">Total: 4 items | Same: 1 | Different: 1 | Left only: 1 | Right only: 1</div>\n"
            "</body>\n</html>\n";
        QCOMPARE(report(items, QStringLiteral("/a&b"), QStringLiteral("/<c> %2")), expected);
    }

    void saysWhenThePageIsNotWritten()
    {
        const QList<FolderDiffItem> items(1, FolderDiffItem());
        const QDateTime time = QDateTime::currentDateTime();
        QBuffer closed;
        closed.open(QIODevice::ReadOnly);
        QTest::ignoreMessage(QtWarningMsg, "QIODevice::write (QBuffer): ReadOnly device");
        QVERIFY(!writeFolderReport(closed, items, labels({}, {}), time));
        QBuffer open;
        open.open(QIODevice::WriteOnly);
        const CancelFlag cancel;
        cancel.cancel();
        QVERIFY(!writeFolderReport(open, items, labels({}, {}), time, cancel));
    }
};

VELMORA_TEST(FolderReportTest)
#include "folder_report_test.moc"
