#include "core/wildcard.h"
#include "folder_engine/test_tree.h"
#include "support/test_main.h"

#include <QDir>
#include <QElapsedTimer>
#include <QRandomGenerator>
#include <QRegularExpression>

using namespace velmora;
using namespace velmora::test;

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
    void patternsAgreeWithRegularExpressions()
    {
        const QStringList names = allStrings(word("aB."), 4);
        for (const QString &pattern : allStrings(word("Ab*?"), 4)) {
            QString expression = QRegularExpression::escape(pattern);
            expression.replace(word("\\*"), word(".*")).replace(word("\\?"), word("."));
            const QRegularExpression plain(u'^' + expression + u'$', QRegularExpression::CaseInsensitiveOption);
            const Wildcard wildcard = Wildcard::fromPattern(pattern);
            for (const QString &name : names)
                QCOMPARE(wildcard.matches(name), plain.match(name).hasMatch());
        }
    }

    /// Every character that has another in the other case, in both directions.
    void caseAgreesWithRegularExpressions()
    {
        for (char32_t point = 1; point < 0x1'F000; ++point) {
            if (QChar::isSurrogate(point))
                continue;
            for (const char32_t other : {QChar::toLower(point), QChar::toUpper(point), QChar::toCaseFolded(point)}) {
                const QString pattern = QString::fromUcs4(&point, 1);
                const QString name = QString::fromUcs4(&other, 1);
                if (point == other)
                    continue;
                const QRegularExpression plain(QRegularExpression::escape(pattern),
                                               QRegularExpression::CaseInsensitiveOption);
                QCOMPARE(Wildcard::fromPattern(pattern).matches(name), plain.match(name).hasMatch());
                QCOMPARE(Wildcard::fromPattern(name).matches(pattern), plain.match(name).hasMatch());
            }
        }
    }

    void matchesNamesThatAreNoText()
    {
        const QString name = u'x' + QString(QChar(0xDCFF)) + word(".txt");
        for (const char *mask : {"*.txt", "x?.txt", "[x]*.txt"})
            QVERIFY(Wildcard::fromMask(word(mask)).matches(name));
    }

    void isNotSlowOnHostileMasks()
    {
        for (const char *repeated : {"*a", "*[a]", "*[!b]"}) {
            const Wildcard mask = Wildcard::fromMask(word(repeated).repeated(40) + u'b');
            QElapsedTimer timer;
            timer.start();
            QVERIFY(!mask.matches(QString(250, u'a')));
            QVERIFY(timer.elapsed() < 1000); // trying all ways would take longer than anybody lives
            QVERIFY(mask.matches(QString(250, u'a') + u'b'));
        }
    }

    /// Masks as people write them, then such of few signs, so that most have lists, ranges and what looks like them.
    void masksAgreeWithTheToolkit()
    {
        const QStringList pieces =
            word("[ [ [! [^ ] ] - - a b D ] * ? z 0 \u017F k ö _ [:alpha:] [:^digit:] [:no:] [=a=] !").split(u' ');
        QStringList names = allStrings(word("aD-]z"), 2) +
                            words("ab|AB|k|s|0|\u017F|\u212A|Ö|!|[|^|_|a-b|:|Main.CPP|main.cpp.bak|a.h|😀|STRAßE 1|"
                                  "éx|A+(b).{2}$|two\nlines|[ab");
        if (QDir::separator() != u'\\') // where the toolkit sees two names in it
            names.append(word("a\\b"));
        const QStringList common =
            QStringList{QString()} + words("a\\b|*.cpp|  *.h |*|?|??|straße*|É?|[!ab]*.txt|a+(b).{2}$|m*.cpp.?ak");
        QRandomGenerator random(17);
        int valid = 0;
        for (int round = 0; round < 20000; ++round) {
            QString mask = common.value(round);
            for (int piece = round < common.size() ? 0 : random.bounded(1, 9); piece > 0; --piece)
                mask += pieces[random.bounded(pieces.size())];
            // Behind these the conversion takes the list to have ended where the expression goes on with it.
            static const QRegularExpression unsettled(word("\\[\\^\\]|\\[[:=]"));
            if (mask.contains(unsettled) && (mask.contains(u'*') || mask.contains(u'?') || mask.count(u'[') > 2))
                continue;
            const QRegularExpression plain(QRegularExpression::wildcardToRegularExpression(mask.trimmed()),
                                           QRegularExpression::CaseInsensitiveOption);
            const Wildcard wildcard = Wildcard::fromMask(mask);
            QVERIFY2(wildcard.isValid() == plain.isValid(), qPrintable(mask));
            valid += plain.isValid();
            for (const QString &name : names)
                QVERIFY2(wildcard.matches(name) == (plain.isValid() && plain.match(name).hasMatch()),
                         qPrintable(mask + word("  ") + name));
        }
        QVERIFY(valid > 5000);
    }

    void splitsMasks()
    {
        QCOMPARE(splitMasks(u" *.cpp; *.h ;;"), words("*.cpp|*.h"));
        QCOMPARE(splitMasks(u" ; "), QStringList());
        const WildcardList list(words("*.cpp|x*"));
        QVERIFY(list.matches(u"X1") && !list.matches(u"y.h") && !WildcardList().matches(u"y"));
    }
};

VELMORA_TEST(WildcardTest)
#include "wildcard_test.moc"
