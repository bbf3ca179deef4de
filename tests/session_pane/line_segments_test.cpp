#include "session/pane/line_segments.h"
#include "session/pane/utf8_units.h"
#include "support/test_main.h"

#include <random>

using namespace velmora;

namespace {

LineSegments segmentsOf(const QByteArray &utf8, qint64 wrapColumns = 0)
{
    return {{utf8.constData(), std::size_t(utf8.size())}, 4, wrapColumns};
}

/// The text put together again from its segments, each checked against what the segment says of itself.
QString joined(const QByteArray &utf8, int tabWidth, qint64 wrapColumns = 0)
{
    const std::string_view bytes(utf8.constData(), std::size_t(utf8.size()));
    LineSegments segments(bytes, tabWidth, wrapColumns);
    QString text;
    for (qsizetype index = 0; segments.contains(index); ++index) {
        const LineSegments::Segment segment = segments.at(index);
        if (segment.unit != text.size())
            return QStringLiteral("segment %1 starts at %2").arg(index).arg(segment.unit);
        if (segment.column != columnCount(bytes.substr(0, std::size_t(segment.byte)), tabWidth))
            return QStringLiteral("segment %1 is at column %2").arg(index).arg(segment.column);
        text += QString::fromUtf8(segments.bytes(index));
    }
    return text;
}

} // namespace

class LineSegmentsTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void countsColumns()
    {
        const auto columns = [](const QString &text) { return columnCount(text.toStdString(), 4); };
        QCOMPARE(columns(QString()), 0);
        QCOMPARE(columns(QStringLiteral("\tx")), 5);
        QCOMPARE(columns(QStringLiteral("abc\tx")), 5);
        QCOMPARE(columns(QStringLiteral("abcd\tx")), 9);
        QCOMPARE(columns(QStringLiteral("äé")), 2);
        QCOMPARE(columns(QStringLiteral("e\u0301x")), 2);
        QCOMPARE(columns(QStringLiteral("漢字")), 4);
        QCOMPARE(columns(QStringLiteral("😀!")), 3);
        QCOMPARE(columns(QStringLiteral("a\u200bb\x1b")), 8); // boxes
    }

    void agreesWithAStringOnUnitsAndColumns()
    {
        std::mt19937 random(3);
        const QStringList alphabet = QStringLiteral("a,b,é,漢,😀,\u0301,\x1b").split(u',');
        for (int round = 0; round < 300; ++round) {
            // Runs of letters, so that some blocks of bytes hold nothing else and characters lie across their ends.
            QString text;
            qint64 columns = 0;
            while (text.size() < 400) {
                const QString sign = alphabet.at(qsizetype(random() % (round % 2 ? 2 : std::size_t(alphabet.size()))));
                const auto count = qsizetype(random() % 40);
                text += sign.repeated(count);
                columns += count * columnCount(sign.toStdString(), 4);
            }
            const std::string utf8 = text.toStdString();
            QCOMPARE(columnCount(utf8, 4), columns);
            QCOMPARE(utf16Length(utf8), text.size());
            for (qsizetype unit = -1; unit <= text.size() + 1; ++unit) {
                const bool inPair = unit > 0 && unit < text.size() && text.at(unit).isLowSurrogate();
                const QString before = text.left(std::max<qsizetype>(inPair ? unit - 1 : unit, 0));
                QCOMPARE(byteOfUnit(utf8, unit), before.toUtf8().size());
            }
        }
    }

    void segmentsPutTogetherAreTheLine()
    {
        const auto x = [](int count) { return QString(count, u'x'); };
        const std::pair<QString, qsizetype> lines[] = {
            // Each with the start of its second part; no character is ever parted.
            {x(1024), 512},
            {QStringLiteral("ab\t").repeated(700), 512},
            {QStringLiteral("漢字 ").repeated(700), 512},
            {x(511) + QStringLiteral("😀e\u0301") + x(600), 513},
            {x(512) + QStringLiteral("\u0301y"), 513},
            {QString(5000, QChar(0x301)), 1024},
            {x(512), 0},
            {QString(), 0},
        };
        for (const auto &[text, second] : lines) {
            const QByteArray utf8 = text.toUtf8();
            QCOMPARE(joined(utf8, 4), text);
            QCOMPARE(joined(utf8, 8), text);
            LineSegments asked = segmentsOf(utf8);
            QCOMPARE(asked.unitCount(), text.size());
            QCOMPARE(asked.columns(), columnCount(text.toStdString(), 4));
            QCOMPARE(asked.contains(1) ? asked.at(1).unit : 0, second);
        }
    }

    void findsPlaces()
    {
        const QByteArray utf8(2000, 'x');
        LineSegments segments = segmentsOf(utf8);
        QCOMPARE(segments.indexAtUnit(0), 0);
        QCOMPARE(segments.indexAtUnit(511), 0);
        QCOMPARE(segments.indexAtUnit(512), 1);
        QCOMPARE(segments.indexAtUnit(99999), 3);
        QCOMPARE(segments.indexAtColumn(1024), 2);
        QCOMPARE(segments.indexAtColumn(99999), 3);
        const QByteArray wide = QStringLiteral("漢").repeated(1000).toUtf8();
        LineSegments doubled = segmentsOf(wide);
        QCOMPARE(doubled.indexAtColumn(1023), 0);
        QCOMPARE(doubled.indexAtColumn(1024), 1);
    }

    void wrapsBetweenWordsWherePossible()
    {
        const auto wrapped = [](const QString &text, qint64 columns) {
            const QByteArray utf8 = text.toUtf8();
            LineSegments segments = segmentsOf(utf8, columns);
            QStringList parts;
            for (qsizetype index = 0; index < segments.count(); ++index)
                parts.append(QString::fromUtf8(segments.bytes(index)));
            return parts.join(u'|');
        };
        QCOMPARE(wrapped(QString(), 10), QString());
        QCOMPARE(wrapped(QStringLiteral("exactly 10"), 10), QStringLiteral("exactly 10"));
        QCOMPARE(wrapped(QStringLiteral("one two three four"), 10), QStringLiteral("one two |three four"));
        QCOMPARE(wrapped(QStringLiteral("abcdefghijklm no"), 5), QStringLiteral("abcde|fghij|klm |no"));
        QCOMPARE(wrapped(QStringLiteral("f(a,b);"), 5), QStringLiteral("f(a,|b);"));
        QCOMPARE(wrapped(QStringLiteral("a\tb\tc"), 8), QStringLiteral("a\tb\t|c"));
        QCOMPARE(wrapped(QStringLiteral("漢字漢字"), 5), QStringLiteral("漢字|漢字"));
        QCOMPARE(wrapped(QStringLiteral("漢字"), 1), QStringLiteral("漢|字"));
        QCOMPARE(wrapped(QStringLiteral("ab \u0301cd"), 4), QStringLiteral("ab \u0301|cd"));
        QCOMPARE(wrapped(QStringLiteral("abe\u0301\u0301cd"), 3), QStringLiteral("abe\u0301\u0301|cd"));
    }

    void wrappedPartsFitAndLoseNothing()
    {
        std::mt19937 random(7);
        const QString alphabet = QStringLiteral("ab, \t漢\u0301\u200b😀-");
        for (int round = 0; round < 500; ++round) {
            QString text;
            for (unsigned size = random() % 60; size > 0; --size) {
                const auto at = qsizetype(random() % std::size_t(alphabet.size()));
                text += alphabet.at(at).isSurrogate() ? QStringLiteral("😀") : QString(alphabet.at(at));
            }
            const QByteArray utf8 = text.toUtf8();
            const qint64 columns = 4 + random() % 12;
            LineSegments segments = segmentsOf(utf8, columns);
            QCOMPARE(joined(utf8, 4, columns), text);
            for (qsizetype index = 0; index < segments.count(); ++index) {
                const qint64 end = index + 1 < segments.count() ? segments.at(index + 1).column : segments.columns();
                QVERIFY(end - segments.at(index).column <= columns);
            }
        }
    }
};

VELMORA_TEST(LineSegmentsTest)
#include "line_segments_test.moc"
