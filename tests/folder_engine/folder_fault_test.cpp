#include "core/content_compare.h"
#include "folder/engine/folder_engine.h"
#include "folder_engine/memory_tree.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QElapsedTimer>

#include <new>
#include <thread>

using namespace velmora;
using namespace velmora::test;

namespace {

const QString leftRoot = QStringLiteral("/l");
const QString rightRoot = QStringLiteral("/r");

QList<FolderDiffItem> compare(const MemoryTree &files, CompareMethod method, int threads = 1,
                              const CancelFlag &cancel = {}, const FolderRunReport &report = {})
{
    return compareFolderTree({.roots = {files.at(leftRoot), files.at(rightRoot)}, .method = method, .threads = threads},
                             cancel, report);
}

/// Some folders of a few files each; in every third pair the contents differ.
void fill(MemoryTree &files)
{
    for (int folder = 0; folder < 12; ++folder) {
        for (int n = 0; n < 5; ++n) {
            const QString name = QStringLiteral("/d%1/e%2/f%3").arg(folder % 4).arg(folder).arg(n);
            files.addFile(leftRoot + name, "left side", n);
            files.addFile(rightRoot + name, n % 3 == 0 ? "leftXside" : "left side", n + 1);
        }
    }
    files.addFile(leftRoot + QLatin1String("/d2/only"), "1");
}

} // namespace

class FolderFaultTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void goesOnAfterAnUnreadableFolder()
    {
        MemoryTree files;
        for (const char *path : {"/l/closed/f", "/r/closed/f", "/l/open", "/r/open"})
            files.addFile(word(path), "1");
        files.setUnreadable(word("/l/closed"));
        QList<FolderProblem> problems;
        const auto items = compare(files, CompareMethod::Crc, 1, {}, {nullptr, &problems});
        QCOMPARE(drawn(items), words(">closed/ 0 1|>closed/f 0 1|=open 1 1"));
        QCOMPARE(problems, (QList<FolderProblem>{{FolderProblem::Kind::UnreadableFolder, word("/l/closed")}}));
    }

    void goesOnAfterFilesThatVanish()
    {
        MemoryTree files;
        for (const char *root : {"/l/", "/r/"}) {
            files.addFile(word(root) + word("both"), "1", root[1]).opens = false;
            files.addFile(word(root) + word("one"), "1", root[1]).opens = root[1] == 'l';
            files.addFile(word(root) + word("rest"), "1", root[1]);
        }
        QList<FolderProblem> problems;
        QCOMPARE(drawn(compare(files, CompareMethod::Rules, 1, {}, {nullptr, &problems})),
                 words("!both 1 1|!one 1 1|=rest 1 1"));
        QCOMPARE(problems, (QList<FolderProblem>{{FolderProblem::Kind::UnreadableFile, word("/l/both")},
                                                 {FolderProblem::Kind::UnreadableFile, word("/r/one"), Side::Right}}));
        QCOMPARE(drawn(compare(files, CompareMethod::Crc)), words("=both 1 1|!one 1 1|=rest 1 1"));
    }

    void takesAReadErrorForTheEnd()
    {
        struct Case {
            qint64 leftFailsAt;
            qint64 rightFailsAt;
            bool same;
        };
        const QByteArray bytes(400'000, 'x');
        for (const Case &failing : {Case{-1, -1, true}, Case{300'000, -1, false}, Case{300'000, 300'000, true},
                                    Case{300'000, 300'001, false}, Case{262'144, -1, false}, // where a piece begins
                                    Case{400'000, -1, true}}) {                              // behind the last byte
            MemoryTree files;
            files.addFile(word("/l/f"), bytes, 1).failsAt = failing.leftFailsAt;
            files.addFile(word("/r/f"), bytes, 2).failsAt = failing.rightFailsAt;
            for (const CompareMethod method : {CompareMethod::Rules, CompareMethod::Binary})
                QCOMPARE(compare(files, method).first().status == 0, failing.same);
        }
        MemoryTree files;
        files.addFile(word("/l/f"), bytes, 1).failsAt = 200'000;
        files.addFile(word("/r/f"), bytes.first(200'000), 2); // whose end is none
        QVERIFY(
            !ContentComparer({files.makeOpener(), files.makeOpener()}, {}).sameByDigest(word("/l/f"), word("/r/f")));
    }

    void readsNoFurtherThanTheFirstDifference()
    {
        MemoryTree files;
        QByteArray bytes(8'000'000, 'x');
        files.addFile(word("/l/f"), bytes, 1);
        bytes[1000] = 'y';
        files.addFile(word("/r/f"), bytes, 2);
        QCOMPARE(drawn(compare(files, CompareMethod::Rules)), words("!f 8000000 8000000"));
        QVERIFY(files.bytesRead() <= 2 * 1024 * 1024);
    }

    /// Whatever the moment of the cancel, what comes back is the begin of the whole result, and no pair in it is
    /// guessed.
    void returnsWhatItHasWhenCancelled()
    {
        for (const int threads : {1, 3}) {
            MemoryTree all;
            fill(all);
            const QList<FolderDiffItem> whole = compare(all, CompareMethod::Rules);
            const int operations = all.operations();
            qsizetype longest = 0;
            for (int stopAt = 1; stopAt <= operations; stopAt += 7) {
                MemoryTree files;
                fill(files);
                const CancelFlag cancel;
                files.setWatcher([&](int number) {
                    if (number == stopAt)
                        cancel.cancel();
                });
                const auto items = compare(files, CompareMethod::Rules, threads, cancel);
                QVERIFY(items.size() < whole.size());
                longest = std::max(longest, items.size());
                for (qsizetype i = 0; i < items.size(); ++i) {
                    QCOMPARE(items[i].name, whole[i].name);
                    if (!items[i].isDir)
                        QCOMPARE(items[i], whole[i]);
                }
            }
            QVERIFY(longest > whole.size() / 2);
        }
    }

    void rollsUpOverWhatACancelLeft()
    {
        MemoryTree files;
        for (const QString &name : words("/d/1|/d/2")) {
            files.addFile(leftRoot + name, "same", 1);
            files.addFile(rightRoot + name, name.endsWith(u'2') ? "othr" : "same", 2);
        }
        const CancelFlag cancel;
        // Four folders are read first; then each file is opened, and read once.
        files.setWatcher([&](int number) {
            if (number == 4 + 5)
                cancel.cancel();
        });
        QCOMPARE(drawn(compare(files, CompareMethod::Rules, 1, cancel)), words("=d/ 4 4|=d/1 4 4"));
    }

    void obeysACancelInsideAHugeFile()
    {
        for (const auto method : {CompareMethod::Rules, CompareMethod::Crc, CompareMethod::Binary}) {
            MemoryTree files;
            files.addZeros(word("/l/f"), qint64(1) << 50U, 1);
            files.addZeros(word("/r/f"), qint64(1) << 50U, 2);
            const CancelFlag cancel;
            QElapsedTimer sinceCancel;
            std::thread canceller([&] {
                while (files.bytesRead() < 8'000'000)
                    std::this_thread::yield();
                sinceCancel.start();
                cancel.cancel();
            });
            const auto items = compare(files, method, 2, cancel);
            QElapsedTimer atReturn;
            atReturn.start();
            canceller.join();
            const qint64 elapsed = sinceCancel.msecsTo(atReturn);
            QCOMPARE(items, {});
            QVERIFY2(elapsed < 500, qPrintable(QString::number(elapsed))); // 100 ms, on a machine that is busy
        }
    }

    void streamsOnePairAtATimeFromASlowDevice()
    {
        MemoryTree files;
        std::array<std::atomic<int>, 2> readers{};
        for (int pair = 0; pair < 2; ++pair) {
            for (const QString &root : {leftRoot, rightRoot}) {
                MemoryTree::File &file =
                    files.addZeros(root + QStringLiteral("/f%1").arg(pair), 20 * 1024 * 1024, root.at(1).unicode());
                file.delay = std::chrono::milliseconds(1);
                file.readers = &readers[std::size_t(pair)];
            }
        }
        std::atomic<bool> both = false;
        files.setWatcher([&](int) {
            if (readers[0] > 0 && readers[1] > 0)
                both = true;
        });
        QCOMPARE(compare(files, CompareMethod::Rules, 2).size(), 2);
        QVERIFY(!both);
    }

    void passesOnALackOfMemory()
    {
        for (const int threads : {1, 3}) {
            for (const int failAt : {1, 20, 80}) {
                MemoryTree files;
                fill(files);
                files.setWatcher([&](int number) {
                    if (number >= failAt)
                        throw std::bad_alloc();
                });
                QVERIFY_THROWS_EXCEPTION(std::bad_alloc, (void)compare(files, CompareMethod::Rules, threads));
            }
        }
    }

    void reportsItsProgress()
    {
        MemoryTree files;
        fill(files);
        files.addZeros(word("/l/large"), 3'000'000, 1);
        files.addZeros(word("/r/large"), 3'000'000, 2);
        QList<ProgressState> states;
        Progress progress([&](const ProgressState &state) { states.append(state); }, std::chrono::milliseconds(0));
        (void)compare(files, CompareMethod::Crc, 1, {}, {&progress, nullptr});
        QVERIFY(!states.isEmpty());
        ProgressState last;
        for (const ProgressState &state : states) {
            QVERIFY(state.phase > last.phase || state.done >= last.done);
            QVERIFY(state.total == 0 || state.done <= state.total);
            QVERIFY(!state.item.isEmpty());
            last = state;
        }
        QCOMPARE(last.phase, int(FolderPhase::Comparing));
    }
};

VELMORA_TEST(FolderFaultTest)
#include "folder_fault_test.moc"
