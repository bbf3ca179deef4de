#include "session/pane/line_inks.h"
#include "support/test_main.h"

#include <QRandomGenerator>

using namespace velmora;

class LineInksTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyUnitHasTheInkThatLiesOnTop()
    {
        constexpr int length = 40;
        QRandomGenerator random(3);
        RoleInks inksOfRoles;
        for (int role = 1; role < syntaxRoleCount; ++role)
            inksOfRoles[std::size_t(role)] = QColor(role, 0, 0);
        for (int round = 0; round < 2000; ++round) {
            std::vector<QColor> wanted(length, QColor(Qt::black));
            std::vector<SyntaxToken> tokens;
            for (int at = random.bounded(6); at < length;) {
                const int size = std::min(1 + random.bounded(6), length - at);
                const auto role = SyntaxRole(1 + random.bounded(syntaxRoleCount - 1));
                tokens.push_back({at, size, role});
                std::fill_n(wanted.begin() + at, size, inksOfRoles[std::size_t(role)]);
                at += size + random.bounded(4);
            }
            LineInks inks{Qt::black, tokens, &inksOfRoles, {}};
            for (int k = random.bounded(4); k > 0; --k) {
                const Tint over{random.bounded(length) - 3, random.bounded(length) + 5, QColor(0, k, 0)};
                inks.over.append(over);
                for (qsizetype unit = std::max<qsizetype>(over.first, 0); unit < std::min<qsizetype>(over.end, length);
                     ++unit)
                    wanted[std::size_t(unit)] = over.colour;
            }

            const int first = random.bounded(length);
            const int end = first + random.bounded(length - first + 1);
            std::vector<QColor> shown(length, QColor(Qt::black));
            qsizetype behind = first;
            for (const Tint &tint : tintsIn(inks, first, end)) {
                QVERIFY(tint.first >= behind && tint.first < tint.end && tint.end <= end);
                behind = tint.end;
                std::fill(shown.begin() + tint.first, shown.begin() + tint.end, tint.colour);
            }
            for (int unit = first; unit < end; ++unit)
                QCOMPARE(shown[std::size_t(unit)], wanted[std::size_t(unit)]);
        }
    }
};

VELMORA_TEST(LineInksTest)
#include "line_inks_test.moc"
