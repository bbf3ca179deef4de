#include "support/test_main.h"
#include "text/text_compare_job.h"

#include <QFile>
#include <QTemporaryDir>

using namespace velmora;

class TextCompareJobTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
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
