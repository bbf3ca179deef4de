#include "core/natural_order.h"
#include "support/test_main.h"

#include <QRandomGenerator>

using namespace velmora;

namespace {

/// The order in plain words: names are cut into numbers and single characters, and these compared in turn.
int plainOrder(const QString &left, const QString &right)
{
    const auto cut = [](const QString &name) {
        QStringList parts;
        for (qsizetype i = 0; i < name.size();) {
            qsizetype end = i;
            while (end < name.size() && name.at(end).isDigit())
                ++end;
            if (end == i) {
                parts.append(name.mid(i++, 1).toCaseFolded());
                continue;
            }
            QString number = name.mid(i, end - i);
            while (number.startsWith(u'0'))
                number.remove(0, 1);
            parts.append(QStringLiteral("0") + number);
            i = end;
        }
        return parts;
    };
    const QStringList a = cut(left);
    const QStringList b = cut(right);
    for (qsizetype i = 0; i < a.size() && i < b.size(); ++i) {
        const bool numbers = a.at(i).startsWith(u'0') && b.at(i).startsWith(u'0');
        if (numbers && a.at(i).size() != b.at(i).size())
            return a.at(i).size() < b.at(i).size() ? -1 : 1;
        if (a.at(i) != b.at(i))
            return a.at(i) < b.at(i) ? -1 : 1;
    }
    if (a.size() != b.size())
        return a.size() < b.size() ? -1 : 1;
    return left.compare(right);
}

int sign(int value)
{
    return value < 0 ? -1 : value > 0;
}

} // namespace

class NaturalOrderTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void listsNamesAsPeopleExpect()
    {
        QVERIFY(compareNatural(u"file2", u"file10") < 0);
        QVERIFY(compareNatural(u"FILE2", u"file10") < 0);
        QVERIFY(compareNatural(u"x99999999999999999999", u"x100000000000000000000") < 0);
        QVERIFY(compareNatural(u"x\u0662", u"x10") < 0); // two, in Arabic digits
        QVERIFY(compareNatural(u"\U00010400", u"\U00010428") != 0);
        QCOMPARE(naturalKey(u"\U00010400"), naturalKey(u"\U00010428")); // one letter in two cases
    }

    void agreesWithThePlainForm()
    {
        QRandomGenerator random(4711);
        const QString alphabet = QStringLiteral("0019aAbB.-_Ää");
        const auto name = [&] {
            QString text;
            for (int length = random.bounded(7); length > 0; --length)
                text.append(alphabet.at(random.bounded(int(alphabet.size()))));
            return text;
        };
        for (int round = 0; round < 20000; ++round) {
            const QString left = name();
            const QString right = name();
            const int expected = sign(plainOrder(left, right));
            const QByteArray what = (left + u'|' + right).toUtf8();
            QVERIFY2(sign(compareNatural(left, right)) == expected, what.constData());
            const int keys = naturalKey(left).compare(naturalKey(right));
            QVERIFY2(keys == 0 || sign(keys) == expected, what.constData());
        }
    }
};

VELMORA_TEST(NaturalOrderTest)
#include "natural_order_test.moc"
