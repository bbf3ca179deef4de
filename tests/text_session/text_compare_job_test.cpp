#include "support/test_main.h"
#include "text/replacement_rules.h"
#include "text/text_compare_job.h"

#include <QFile>
#include <QTemporaryDir>

using namespace velmora;

namespace {

QString replaced(const QByteArray &text, const QStringList &find, const QStringList &with)
{
    const TextLines lines = applyReplacements(TextLines::split(text), find, with, {});
    QStringList result;
    for (qsizetype line = 0; line < lines.count(); ++line)
        result.append(lines.text(line));
    return result.join(u'|');
}

} // namespace

class TextCompareJobTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void appliesRulesInOrder()
    {
        const auto a = QStringLiteral("a");
        const auto b = QStringLiteral("b");
        const auto c = QStringLiteral("c");
        QCOMPARE(replaced("a b\na\n", {a, b}, {b, c}), QStringLiteral("c c|c"));
        QCOMPARE(replaced("aAa\n", {a}, {}), QStringLiteral("A"));
        QCOMPARE(replaced("abc\n", {QString(), b}, {c, QString()}), QStringLiteral("ac"));
        QCOMPARE(replaced("aaa\n", {QStringLiteral("aa")}, {a}),
                 QStringLiteral("aa")); // found text is not searched again
    }

    void keepsLinesApart()
    {
        const auto x = QStringLiteral("x");
        QCOMPARE(replaced("x\ny\n", {x}, {QStringLiteral("1\n2")}), QStringLiteral("1\u20282|y"));
        QCOMPARE(replaced("x\ny", {x}, {QStringLiteral("1\r")}), QStringLiteral("1\r|y"));
        QCOMPARE(replaced("\n\nx", {x}, {}), QStringLiteral("||"));
        QCOMPARE(replaced("", {x}, {x}), QString());
    }

    void reportsAFileThatIsGone()
    {
        QTemporaryDir folder;
        QFile file(folder.filePath(QStringLiteral("a")));
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.close();
        TextCompareInput input;
        input.left.path = file.fileName();
        input.right.path = folder.filePath(QStringLiteral("gone"));
        Progress progress;
        TextCompareResult result = runTextCompare(input, {}, progress);
        QCOMPARE(result.unreadable, Side::Right);
        QVERIFY(!result.document);
        std::swap(input.left, input.right);
        QCOMPARE(runTextCompare(input, {}, progress).unreadable, Side::Left);
    }

    void aCancelledComparisonHasNoResult()
    {
        LoadedSide loaded;
        loaded.text = decodeText("1\n2\n", TextEncoding());
        TextCompareInput input;
        input.left.loaded = loaded;
        CancelFlag cancel;
        cancel.cancel();
        Progress progress;
        QVERIFY(!runTextCompare(input, cancel, progress).document);
        QVERIFY(runTextCompare(input, {}, progress).document);
    }
};

VELMORA_TEST(TextCompareJobTest)
#include "text_compare_job_test.moc"
