#include "fuzz/targets.h"
#include "support/test_main.h"

#include <QDir>
#include <QRandomGenerator>

#include <stdexcept>

using namespace velmora;

class CorpusTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyInputKeepsThePromises_data()
    {
        QTest::addColumn<int>("target");
        for (int target = 0; target < int(fuzz::targets().size()); ++target)
            QTest::newRow(fuzz::targets()[size_t(target)].name) << target;
    }

    /// Each input as it stands, cut off, and with bytes changed; VELMORA_FUZZ_ROUNDS times where that is set.
    void everyInputKeepsThePromises()
    {
        QFETCH(int, target);
        const fuzz::Target &tried = fuzz::targets()[size_t(target)];
        const QDir folder(QStringLiteral(VELMORA_SOURCE_DIR "/tests/fuzz/corpus/") + QString::fromLatin1(tried.name));
        const QStringList names = folder.entryList(QDir::Files);
        QVERIFY(names.size() >= 3);
        const int rounds = std::max(60, qEnvironmentVariableIntValue("VELMORA_FUZZ_ROUNDS"));
        QRandomGenerator random(1);
        for (const QString &name : names) {
            QFile file(folder.filePath(name));
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QByteArray whole = file.readAll();
            for (int round = 0; round < rounds; ++round) {
                QByteArray input = round == 0 ? whole : whole.first(random.bounded(whole.size() + 1));
                if (round % 2 == 1)
                    input = whole;
                for (int change = 0; round > 0 && !input.isEmpty() && change < round % 5; ++change)
                    input[random.bounded(input.size())] = static_cast<char>(random.bounded(256));
                try {
                    tried.run(input);
                } catch (const std::logic_error &broken) {
                    QFAIL(qPrintable(
                        QStringLiteral("%1: %2: %3")
                            .arg(name, QString::fromUtf8(broken.what()), QString::fromLatin1(input.toHex()))));
                }
            }
        }
    }
};

VELMORA_TEST(CorpusTest)
#include "corpus_test.moc"
