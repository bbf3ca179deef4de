#include "merge/engine/three_way_merge.h"
#include "support/test_main.h"
#include "text_engine/lines.h"
#include "text_engine/plain_engine.h"

#include <QMap>
#include <QSet>

#include <array>

using namespace velmora;
using namespace velmora::test;

namespace {

QStringList split(const char *text)
{
    return *text ? QString::fromUtf8(text).split(u'/') : QStringList();
}

QStringList block(const QString &left, const QString &base, const QString &right)
{
    return split("<<<<<<< LEFT") + QStringList{left} + split("||||||| BASE") + QStringList{base} + split("=======") +
           QStringList{right} + split(">>>>>>> RIGHT");
}

/// The rules one by one, over rows of the plain line diff engine.
QStringList plainMerge(const QStringList &base, const QStringList &left, const QStringList &right,
                       QList<MergeConflict> &conflicts)
{
    struct Version {
        QMap<int, QString> modified;
        QSet<int> deleted;
    };
    const auto versionOf = [&base](const QStringList &lines) {
        Version version;
        for (const DiffLine &row : plain::aligned(base, lines, {0, 0.35, 0, 2000})) {
            if (row.kind == Modified)
                version.modified[row.leftLine - 1] = row.rightText;
            else if (row.kind == Removed)
                version.deleted.insert(row.leftLine - 1);
        }
        return version;
    };
    const Version l = versionOf(left);
    const Version r = versionOf(right);
    QStringList merged;
    for (int b = 0; b < base.size(); ++b) {
        const bool mL = l.modified.contains(b);
        const bool mR = r.modified.contains(b);
        const bool dL = l.deleted.contains(b);
        const bool dR = r.deleted.contains(b);
        if ((dL && (dR || !mR)) || (dR && !mL))
            continue;
        if (!mL && !mR) {
            merged.append(base[b]);
        } else if (!mL || !mR) {
            merged.append(mL ? l.modified[b] : r.modified[b]);
        } else if (l.modified[b] == r.modified[b]) {
            merged.append(l.modified[b]);
        } else {
            const int start = int(merged.size());
            merged += block(l.modified[b], base[b], r.modified[b]);
            conflicts.append({start, start + 6, {base[b]}, {l.modified[b]}, {r.modified[b]}});
        }
    }
    return merged;
}

/// The lines of a merge that holds no texts, as `mergeThreeWay` writes them.
QStringList withTexts(const ThreeWayMerge &merge, const TextLines &base, const TextLines &left, const TextLines &right)
{
    QStringList lines;
    for (const MergedLine &line : merge.lines) {
        if (line.from == MergedFrom::Conflict)
            lines += block(left.text(line.left), base.text(line.base), right.text(line.right));
        else if (line.from == MergedFrom::Base)
            lines += base.text(line.base);
        else
            lines += line.from == MergedFrom::Right ? right.text(line.right) : left.text(line.left);
    }
    return lines;
}

} // namespace

class ThreeWayMergeTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void rules()
    {
        struct Case {
            const char *base;
            const char *left;
            const char *right;
            const char *merged;
        };
        const std::array cases{
            Case{"one/two/three", "one/two/three", "one/two/three", "one/two/three"},
            Case{"one/two 1/three", "one/two 2/three", "one/two 1/three", "one/two 2/three"},
            Case{"one/two 1/three", "one/two 1/three", "one/two 2/three", "one/two 2/three"},
            Case{"one/two 1/three", "one/two 2/three", "one/two 2/three", "one/two 2/three"},
            Case{"one/two 1/three", "one/two 2/three", "one/two 3/three",
                 "one/<<<<<<< LEFT/two 2/||||||| BASE/two 1/=======/two 3/>>>>>>> RIGHT/three"},
            // One deletes what the other changes, or leaves alone, or deletes too.
            Case{"one/two 1/three", "one/three", "one/two 3/three", "one/two 3/three"},
            Case{"one/two 1/three", "one/two 2/three", "one/three", "one/two 2/three"},
            Case{"one/two/three", "one/three", "one/two/three", "one/three"},
            Case{"one/two/three", "one/three", "one/three", "one/three"},
            // Inserted lines are left out, and so are those that resemble nothing.
            Case{"one/three", "zero/one/two/three", "one/three/four", "one/three"},
            Case{"one/two/three", "one/XYZ/three", "one/two/three", "one/three"},
            Case{"", "one", "two", ""},
        };
        for (const Case &one : cases) {
            QList<MergeConflict> conflicts{{}};
            const QStringList merged = mergeThreeWay(split(one.base), split(one.left), split(one.right), conflicts);
            QCOMPARE(merged.join(u'/'), QString::fromLatin1(one.merged));
            const bool conflict = QByteArray(one.merged).contains('<');
            const MergeConflict expected{1, 7, split("two 1"), split("two 2"), split("two 3")};
            QCOMPARE(conflicts, conflict ? QList{expected} : QList<MergeConflict>());
        }
    }

    /// Beside the plain form, in both forms; and no line of a version is neither in the merge nor told as left out.
    void randomTextsAgree()
    {
        Random random(11);
        for (int round = 0; round < 600; ++round) {
            QStringList base = randomLines(random, round % 60 == 0 ? 800 : 30);
            // Of lines that end in a carriage return, only string lists know.
            base.replaceInStrings(QStringLiteral("\r"), QString());
            const QStringList left = editedLines(random, base, qint32(random.below(12)));
            const QStringList right = editedLines(random, base, qint32(random.below(12)));
            QList<MergeConflict> expectedConflicts;
            const QStringList expected = plainMerge(base, left, right, expectedConflicts);
            QList<MergeConflict> conflicts;
            QCOMPARE(dump(mergeThreeWay(base, left, right, conflicts)), dump(expected));
            QCOMPARE(conflicts, expectedConflicts);

            if (!(left + right).filter(QStringLiteral("\r")).isEmpty())
                continue;
            const TextLines b = toTextLines(base);
            const TextLines l = toTextLines(left);
            const TextLines r = toTextLines(right);
            Progress progress;
            const ThreeWayMerge merge = mergeThreeWay(b, l, r, {}, progress);
            QCOMPARE(dump(withTexts(merge, b, l, r)), dump(expected));
            compareLeftOut(merge, base, left, Side::Left);
            compareLeftOut(merge, base, right, Side::Right);
        }
    }

    void cancelling()
    {
        const CancelFlag cancel;
        cancel.cancel();
        QList<MergeConflict> conflicts{{}};
        QVERIFY(mergeThreeWay(split("a"), split("b"), split("c"), conflicts, cancel).isEmpty());
        QVERIFY(conflicts.isEmpty());
    }

private:
    static void compareLeftOut(const ThreeWayMerge &merge, const QStringList &base, const QStringList &version,
                               Side side)
    {
        QList<qint32> expected;
        for (const DiffLine &row : plain::aligned(base, version, {0, 0.35, 0, 2000})) {
            if (row.kind == Added)
                expected.append(row.rightLine - 1);
        }
        QList<qint32> found;
        for (const LeftOutLine &line : merge.leftOut) {
            if (line.side == side)
                found.append(line.line);
            const auto at = size_t(line.at);
            QVERIFY(at <= merge.lines.size());
        }
        QCOMPARE(found, expected);
    }
};

VELMORA_TEST(ThreeWayMergeTest)

#include "three_way_merge_test.moc"
