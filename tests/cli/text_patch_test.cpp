#include "cli_fixture.h"
#include "core/text_encode.h"
#include "support/test_main.h"
#include "text/engine/text_patch.h"

#include <QProcess>
#include <QRandomGenerator>
#include <QStandardPaths>

using namespace velmora;
using namespace velmora::test;

namespace {

/// Lines over a small alphabet, so that many are equal, with any line end and now and then none at the end of the text.
QByteArray randomText(QRandomGenerator &random)
{
    static const QList<QByteArray> contents{"", "a", "b", " a", "A", "c c", "-- x", "++ y", "@@ z"};
    static const QList<QByteArray> ends{"\n", "\n", "\n", "\n", "\r\n"};
    QByteArray text;
    for (int lines = random.bounded(14); lines > 0; --lines)
        text += contents[random.bounded(contents.size())] + ends[random.bounded(ends.size())];
    if (random.bounded(3) == 0)
        text += contents[random.bounded(1, int(contents.size()))] + (random.bounded(4) == 0 ? "\r" : "");
    return text;
}

/// `text` after some of its lines were changed, moved or dropped.
QByteArray edited(QRandomGenerator &random, const QByteArray &text)
{
    QList<QByteArray> lines = text.split('\n');
    for (int edits = random.bounded(4); edits > 0; --edits) {
        const qsizetype at = random.bounded(lines.size());
        if (random.bounded(2) == 0)
            lines.insert(at, randomText(random));
        else if (lines.size() > 1)
            lines.removeAt(at);
    }
    return lines.join('\n');
}

} // namespace

class TextPatchTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_patchProgram = QStandardPaths::findExecutable(word("patch")); }

    void looksAsPatchesDo()
    {
        struct Case {
            QByteArray left;
            QByteArray right;
            QByteArray hunks;
        };
        const QList<Case> cases{
            {"", "a\nb\n", "@@ -0,0 +1,2 @@\n+a\n+b\n"},
            {"a\n", "", "@@ -1 +0,0 @@\n-a\n"},
            {"a\n", " a\n", "@@ -1 +1 @@\n-a\n+ a\n"},
            {"a\nb\n", "a\r\nb\n", "@@ -1,2 +1,2 @@\n-a\n+a\r\n b\n"},
            {"a", "a\n", "@@ -1 +1 @@\n-a\n\\ No newline at end of file\n+a\n"},
            {"x\na", "y\na", "@@ -1,2 +1,2 @@\n-x\n+y\n a\n\\ No newline at end of file\n"},
            {"a\r", "a", "@@ -1 +1 @@\n-a\r\n\\ No newline at end of file\n+a\n\\ No newline at end of file\n"},
            {"0\n1\n2\n3\n4\n5\n6\n7\n8\n", "x\n1\n2\n3\n4\n5\n6\n7\ny\n",
             "@@ -1,4 +1,4 @@\n-0\n+x\n 1\n 2\n 3\n@@ -6,4 +6,4 @@\n 5\n 6\n 7\n-8\n+y\n"},
            {"0\n1\n2\n3\n4\n5\n6\n7\n", "x\n1\n2\n3\n4\n5\n6\ny\n",
             "@@ -1,8 +1,8 @@\n-0\n+x\n 1\n 2\n 3\n 4\n 5\n 6\n-7\n+y\n"},
            {"\xEF\xBB\xBF"
             "a\n",
             "a\n",
             "@@ -1 +1 @@\n-\xEF\xBB\xBF"
             "a\n+a\n"},
        };
        for (const Case &tried : cases) {
            const CliResult result = makePatch(tried.left, tried.right, {});
            QCOMPARE(result.output.mid(result.output.indexOf("@@")), tried.hunks);
            QCOMPARE(result.status, 1);
        }
    }

    void quotesStrangeNames()
    {
        const TextLines left = TextLines::split("a\n");
        const QByteArray patch = written({{0, 1, 0, 0}}, word("with space"), left, word("a\"b\\c\nü"), {});
        QVERIFY(patch.startsWith("--- with space\t\n+++ \"a\\\"b\\\\c\\012\xC3\xBC\"\n@@ "));
    }

    void gitCallsIt()
    {
        const CliFiles files;
        CliFiles::write("old", "a\n");
        CliFiles::write("new", "b\n");
        const CliResult changed = runCli("text dir/x old 78981922 100644 new 61780798 100644");
        QCOMPARE(changed.status, 0);
        QCOMPARE(changed.output, QByteArray("--- a/dir/x\n+++ b/dir/x\n@@ -1 +1 @@\n-a\n+b\n"));
        QCOMPARE(runCli("text x old 0 100644 new 0 100644 y similarity").output.left(16),
                 QByteArray("--- a/x\n+++ b/y\n"));
        QCOMPARE(runCli("text x /dev/null . . new 0 100644").output,
                 QByteArray("--- /dev/null\n+++ b/x\n@@ -0,0 +1 @@\n+b\n"));
        QCOMPARE(runCli("text --format summary --label L x old 0 0 missing 0 0").status, 2);
        QCOMPARE(runCli("text old new --format patch --label L --label R").output.left(12),
                 QByteArray("--- L\n+++ R\n"));
        QCOMPARE(runCli("text x").status, 2);
        qputenv("GIT_DIFF_PATH_COUNTER", "1");
        const CliResult unmerged = runCli("text x");
        qunsetenv("GIT_DIFF_PATH_COUNTER");
        QCOMPARE(unmerged.output, QByteArray("* Unmerged path x\n"));
        QCOMPARE(unmerged.status, 0);
    }

    void rowsMayLeaveLinesOutOrCallThemEqual()
    {
        const TextLines left = TextLines::split("\n\na\nb\n\n");
        const TextLines right = TextLines::split("\nA\nb\n\n\n\n");
        const QList<AlignedRow> rows{{Equal, 3, 2}, {Equal, 4, 3}};
        const std::vector<PatchChange> changes = byteChanges(rows, left, right);
        QCOMPARE(changes, (std::vector<PatchChange>{{1, 3, 1, 2}, {5, 5, 4, 6}}));
    }

    void makesAPatchOfSomeOfTheChanges()
    {
        const TextLines left = TextLines::split("1\n2\n3\n4\n5\n6\n7\n8\n9\n");
        const TextLines right = TextLines::split("1\nB\nC\nnew\n4\n5\n6\n7\n8\nend\n");
        const std::vector<PatchChange> all = {{1, 3, 1, 4}, {8, 9, 9, 10}};
        const auto patchOf = [&](const PatchChange &lines) {
            const QByteArray patch = written(changesWithin(all, lines), word("a"), left, word("b"), right);
            return patch.mid(patch.indexOf("@@"));
        };
        // One line of the first change, what it only adds, the second one by itself, and none.
        QCOMPARE(patchOf({2, 3, 2, 3}), QByteArray("@@ -1,6 +1,6 @@\n 1\n 2\n-3\n+C\n 4\n 5\n 6\n"));
        QCOMPARE(patchOf({3, 3, 3, 4}), QByteArray("@@ -1,6 +1,7 @@\n 1\n 2\n 3\n+new\n 4\n 5\n 6\n"));
        QCOMPARE(patchOf({5, 9, 6, 10}), QByteArray("@@ -6,4 +6,4 @@\n 6\n 7\n 8\n-9\n+end\n"));
        QCOMPARE(patchOf({4, 7, 5, 8}), QByteArray());
    }

    void applyingItGivesTheRightFile()
    {
        if (m_patchProgram.isEmpty())
            QSKIP("no patch program here");
        const char *const rules = R"({"alignAlgorithm": %1, "unimportantText": ["a"], "ignoreBlankLines": true})";
        CliFiles::write("unaligned", word(rules).arg(3).toUtf8());
        CliFiles::write("unimportant", word(rules).arg(0).toUtf8());
        for (const char *options : {"", "--preset strict", "--preset ignore-case", "--preset relaxed",
                                    "--options unaligned", "--options unimportant"}) {
            QRandomGenerator random(5);
            for (int round = 0; round < 60; ++round) {
                const QByteArray left = randomText(random);
                const QByteArray right = random.bounded(4) == 0 ? randomText(random) : edited(random, left);
                const CliResult result = makePatch(left, right, options);
                QCOMPARE(options + result.errors, QByteArray(options));
                QCOMPARE(result.status, left == right ? 0 : 1);
                QCOMPARE(runCli("text left right --preset strict").status, result.status); // counts all of it, too
                QCOMPARE(result.output.isEmpty(), left == right);
                if (left != right)
                    QCOMPARE(applied(result.output), right);
            }
        }
    }

    void appliesToOtherEncodings()
    {
        if (m_patchProgram.isEmpty())
            QSKIP("no patch program here");
        for (const char *encoding : {"GB18030", "Shift-JIS", "UTF-8 BOM", "UTF-16 LE", "UTF-16 BE"}) {
            const TextEncoding target = TextEncoding::fromName(word(encoding));
            const QByteArray left = encodeText(word("日本語の文章です。\n二行目\n上\n").repeated(3), target).bytes;
            const QByteArray right = encodeText(word("日本語の文章です。\r\n二行\n上\n").repeated(3), target).bytes;
            const CliResult result = makePatch(left, right, {});
            QCOMPARE(result.status, 1);
            QCOMPARE(applied(result.output), right);
        }
    }

private:
    static QByteArray written(const std::vector<PatchChange> &changes, const QString &leftName, const TextLines &left,
                              const QString &rightName, const TextLines &right)
    {
        QByteArray bytes;
        QBuffer device(&bytes);
        if (!device.open(QIODevice::WriteOnly))
            return "not opened";
        OutputBuffer output(device);
        writePatch(output, changes, leftName, left, rightName, right);
        return output.finish() ? bytes : QByteArray("not written");
    }

    static CliResult makePatch(const QByteArray &left, const QByteArray &right, const QByteArray &options)
    {
        CliFiles::write("left", left);
        CliFiles::write("right", right);
        return runCli("text --format=patch left right " + options);
    }

    /// The left file after the patch.
    QByteArray applied(const QByteArray &patch)
    {
        QFile::remove(word("out"));
        QProcess program;
        program.start(m_patchProgram, word("-p0 -s -o out left").split(u' '));
        program.waitForStarted();
        program.write(patch);
        program.closeWriteChannel();
        program.waitForFinished();
        return program.exitCode() == 0 ? CliFiles::read("out") : program.readAllStandardOutput() + patch;
    }

    CliFiles m_files;
    QString m_patchProgram;
};

VELMORA_TEST(TextPatchTest)
#include "text_patch_test.moc"
