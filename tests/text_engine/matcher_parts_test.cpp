#include "support/test_main.h"
#include "text/engine/candidate_window.h"
#include "text/engine/line_similarity.h"
#include "text/engine/position_set.h"
#include "text_engine/sequences.h"

#include <algorithm>
#include <set>

using namespace velmora;
using namespace velmora::test;

class MatcherPartsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void positionsFindTheirNeighbours()
    {
        Random random(8);
        for (const qint32 size : {1, 63, 64, 65, 4096, 5000, 300000}) {
            PositionSet positions(size);
            std::set<qint32> expected;
            for (int round = 0; round < 400; ++round) {
                const auto at = qint32(random.below(quint64(size)));
                const auto above = expected.lower_bound(at);
                const auto behind = expected.upper_bound(at);
                QCOMPARE(positions.atOrAfter(at), above == expected.end() ? -1 : *above);
                QCOMPARE(positions.atOrBefore(at), behind == expected.begin() ? -1 : *std::prev(behind));
                if (round % 3 == 0) {
                    const auto added = qint32(random.below(quint64(size)));
                    positions.insert(added);
                    expected.insert(added);
                }
            }
            QCOMPARE(positions.atOrAfter(size), -1);
        }
    }

    /// Marks may let a line through that shares too little, but never hold one back.
    void marksHoldNoneBack()
    {
        Random random(44);
        const auto line = [&random] {
            std::string text(size_t(random.below(90)), 'a');
            for (quint64 change = random.below(4); change > 0 && !text.empty(); --change)
                text[size_t(random.below(text.size()))] = char('b' + random.below(3));
            return text;
        };
        CandidateWindow window;
        std::vector<std::string> lines;
        window.reset(0);
        qint32 first = 0;
        qint32 passed = 0;
        qint32 passedInVain = 0;
        for (int round = 0; round < 6000; ++round) {
            lines.push_back(line());
            window.append(LineMarks(std::string_view(lines.back())));
            if (window.end() - first > 60)
                window.dropBefore(++first);
            const std::string left = line();
            const auto units = qint64(1 + random.below(std::max<size_t>(left.size(), 1)));
            const LineMarks marks{std::string_view(left)};
            for (qint32 c = first; c < window.end(); ++c) {
                const std::string_view x(left);
                const std::string_view y(lines[size_t(c)]);
                const size_t prefix = commonPrefix(x, y);
                const size_t shared = prefix + commonSuffix(x, y, std::min(x.size(), y.size()) - prefix);
                const bool passes = window.find(marks, units, c, c + 1) == c;
                QVERIFY(passes || qint64(shared) < units);
                passed += passes;
                passedInVain += passes && qint64(shared) < units;
            }
            const qint32 found = window.find(marks, units, first, window.end());
            for (qint32 c = first; c < found; ++c)
                QCOMPARE(window.find(marks, units, c, c + 1), c + 1);
        }
        QVERIFY2(passedInVain < passed / 4, qPrintable(QStringLiteral("%1 of %2").arg(passedInVain).arg(passed)));
    }
};

VELMORA_TEST(MatcherPartsTest)
#include "matcher_parts_test.moc"
