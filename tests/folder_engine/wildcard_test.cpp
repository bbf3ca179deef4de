#include "core/wildcard.h"
#include "support/test_main.h"

#include <QElapsedTimer>

using namespace velmora;

namespace {

/// Every string over `alphabet` up to a length.
QStringList allStrings(const QString &alphabet, int length)
{
    QStringList all{QString()};
    for (qsizetype begin = 0; length > 0; --length) {
        const qsizetype end = all.size();
        for (; begin < end; ++begin) {
            for (const QChar letter : alphabet)
                all.append(all.at(begin) + letter);
        }
    }
    return all;
}

} // namespace

class WildcardTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void agreesWithRegularExpressions()
    {
        const QStringList names = allStrings(QStringLiteral("aB."), 4);
        for (const QString &pattern : allStrings(QStringLiteral("Ab*?"), 4)) {
            QString expression = QRegularExpression::escape(pattern);
            expression.replace(QLatin1String("\\*"), QLatin1String(".*"))
                .replace(QLatin1String("\\?"), QLatin1String("."));
            const QRegularExpression plain(u'^' + expression + u'$', QRegularExpression::CaseInsensitiveOption);
            const Wildcard wildcard = Wildcard::fromPattern(pattern);
            for (const QString &name : names)
                QCOMPARE(wildcard.matches(name), plain.match(name).hasMatch());
        }
    }

    void matchesMasks_data()
    {
        QTest::addColumn<QString>("mask");
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("matches");

        const auto row = [](const char *mask, const char *name, bool matches) {
            QTest::addRow("%s on %s", mask, name) << QString::fromUtf8(mask) << QString::fromUtf8(name) << matches;
        };
        row("*.cpp", "Main.CPP", true);
        row("*.cpp", "main.cpp.bak", false);
        row("  *.h ", "a.h", true);
        row("", "a", false);
        row("", "", true);
        row("*", "", true);
        row("?", "😀", true);
        row("??", "😀", false);
        row("straße*", "STRAßE 1", true);
        row("É?", "éx", true);
        row("k", "K", true); // the sign for Kelvin
        row("[ab]*.txt", "Beta.txt", true);
        row("[!ab]*.txt", "Beta.txt", false);
        row("[ab", "[ab", false); // what Qt makes of it
        row("a+(b).{2}$", "A+(b).{2}$", true);
        row("a\\b", "a\\b", true);
        row("*", "two\nlines", true);
    }

    void matchesMasks()
    {
        QFETCH(QString, mask);
        QFETCH(QString, name);
        QFETCH(bool, matches);
        QCOMPARE(Wildcard::fromMask(mask).matches(name), matches);
        if (!mask.contains(QLatin1String("[ab"))) {
            const QRegularExpression toolkit(QRegularExpression::wildcardToRegularExpression(mask.trimmed()),
                                             QRegularExpression::CaseInsensitiveOption);
            QCOMPARE(toolkit.match(name).hasMatch(), matches);
        }
    }

    void matchesNamesThatAreNoText()
    {
        const QString name = QStringLiteral("x") + QChar(0xDCFF) + QStringLiteral(".txt");
        QVERIFY(Wildcard::fromMask(QStringLiteral("*.txt")).matches(name));
        QVERIFY(Wildcard::fromMask(QStringLiteral("x?.txt")).matches(name));
        QVERIFY(Wildcard::fromMask(QStringLiteral("[x]*.txt")).matches(name));
    }

    void isNotSlowOnHostileMasks()
    {
        const Wildcard mask = Wildcard::fromPattern(QStringLiteral("*a").repeated(40) + u'b');
        QElapsedTimer timer;
        timer.start();
        QVERIFY(!mask.matches(QString(250, u'a')));
        QVERIFY(timer.elapsed() < 1000); // trying all ways would take longer than anybody lives
    }

    void splitsMasks()
    {
        QCOMPARE(splitMasks(u" *.cpp; *.h ;;"), (QStringList{QStringLiteral("*.cpp"), QStringLiteral("*.h")}));
        QCOMPARE(splitMasks(u" ; "), QStringList());
        const WildcardList list({QStringLiteral("*.cpp"), QStringLiteral("x*")});
        QVERIFY(list.matches(u"X1"));
        QVERIFY(!list.matches(u"y.h"));
        QVERIFY(!WildcardList().matches(u"y"));
    }
};

VELMORA_TEST(WildcardTest)
#include "wildcard_test.moc"
