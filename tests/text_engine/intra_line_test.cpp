#include "support/test_main.h"
#include "text/engine/line_marks.h"
#include "text_engine/lines.h"
#include "text_engine/plain_engine.h"

using namespace velmora;
using namespace velmora::test;

namespace {

QByteArray marked(const QString &b, const QList<CharRange> &ranges)
{
    QString text = b;
    for (qsizetype k = ranges.size(); k-- > 0;) {
        text.insert(ranges[k].start + ranges[k].length, u']');
        text.insert(ranges[k].start, u'[');
    }
    return text.toUtf8();
}

} // namespace

class IntraLineTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void marksAreWordsAndTellWhatDoesNotCount()
    {
        const auto shown = [](const char *own, const char *other, const KeyRules &rules) {
            QString text = QString::fromUtf8(own);
            const QString otherText = QString::fromUtf8(other);
            const QList<LineMark> marks = lineMarks(text, intraLineChanges(otherText, text), otherText, rules);
            for (qsizetype k = marks.size(); k-- > 0;) {
                text.insert(marks[k].end(), marks[k].minor ? u')' : u']');
                text.insert(marks[k].start, marks[k].minor ? u'(' : u'[');
            }
            return text.toUtf8();
        };
        const KeyRules space{.dropLeading = true, .dropTrailing = true, .collapse = true};
        const KeyRules letterCase{.foldCase = true};
        QCOMPARE(shown("xayb", "a", {}), QByteArray("[xayb]"));
        QCOMPARE(shown("x-y", "-", {}), QByteArray("[x]-[y]")); // no word goes on there
        QCOMPARE(shown("xabcy", "abc", {}), QByteArray("[x]abc[y]"));
        QCOMPARE(shown("  a = 1", "a = 2", {}), QByteArray("[  ]a = [1]"));
        QCOMPARE(shown("  a = 1", "a = 2", space), QByteArray("(  )a = [1]"));
        QCOMPARE(shown("a b1", "ab2", space), QByteArray("a[ ]b[1]"));
        QCOMPARE(shown("a\tb1  ", "a b2", space), QByteArray("a(\t)b[1](  )"));
        QCOMPARE(shown("a  b1", "a b2", space), QByteArray("a( ) b[1]"));
        QCOMPARE(shown("Name 1", "name 2", letterCase), QByteArray("(N)ame [1]"));
    }

    /// Some too long for the table.
    void randomLinesAgree()
    {
        Random random(1);
        for (int round = 0; round < 1500; ++round) {
            QString a = randomLine(random, 12);
            QString b = randomLine(random, 12);
            while (round % 375 == 0 && a.size() < 700)
                a += randomLine(random, 20);
            if (a.size() > 400) {
                b = a;
                for (int change = 0; change < 20; ++change)
                    b.insert(qsizetype(random.below(quint64(b.size()))), randomLine(random, 2));
            } else if (round % 2 == 0) {
                b = a.left(qsizetype(random.below(20))) + b + a.mid(qsizetype(random.below(30)));
            }
            QCOMPARE(intraLineChanges(a, b), plain::intraLine(a, b));
        }
    }

    /// 447 by 447 and 400 by 500 units are matched by the table, 448 by 448 by blocks.
    void theTableEndsAt200000Cells()
    {
        for (const auto &[leftSize, rightSize, expected] :
             {std::tuple(447, 447, "a[2]b[2]c[2]d[xyz-"), std::tuple(400, 500, "a[2]b[2]c[2]d[xyz-"),
              std::tuple(448, 448, "[a2b2c2d]xyz[-")}) {
            const QString a = QStringLiteral("xyza1b1c1d").leftJustified(leftSize, u'+');
            const QString b = QStringLiteral("a2b2c2dxyz").leftJustified(rightSize, u'-');
            QVERIFY2(marked(b, intraLineChanges(a, b)).startsWith(expected), expected);
        }
    }
};

VELMORA_TEST(IntraLineTest)
#include "intra_line_test.moc"
