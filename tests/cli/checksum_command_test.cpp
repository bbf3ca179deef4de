#include "cli_fixture.h"
#include "support/test_main.h"

using namespace velmora;
using namespace velmora::test;

class ChecksumCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_files.emplace(); // the old one goes first
        QVERIFY(QDir().mkdir(word("d")));
        CliFiles::write("d/a", "123456789");
        CliFiles::write("d/b", "x");
    }

    void answersByOutputAndStatus()
    {
        const struct {
            QByteArray arguments;
            int status;
            QByteArray output; ///< or how the error begins
        } cases[] = {
            {"checksum d/a --algorithm crc32 --algorithm md5", 0,
             "CRC32 (d/a) = cbf43926\nMD5 (d/a) = 25f9e794323b453885f5181f1b624d0b\n"},
            {"checksum d/a d/b --algorithm crc32", 1,
             "CRC32 (d/a) = cbf43926\nCRC32 (d/b) = 8cdc1683\nChecksums differ\n"},
            {"checksum d/a --expect CBF43926", 0, "CRC32 (d/a) = cbf43926\nChecksums match\n"},
            {"checksum d --format sfv", 0, "a CBF43926\nb 8CDC1683\n"},
            {"checksum d --format json --algorithm crc32", 0,
             "{\n\"match\":null,\n\"checksums\":[\n{\"name\":\"a\",\"algorithm\":\"crc32\",\"digest\":\"CBF43926\"},\n"
             "{\"name\":\"b\",\"algorithm\":\"crc32\",\"digest\":\"8CDC1683\"}\n]\n}\n"},
            {"checksum none", 2, "none: cannot be read"},
            {"checksum d/a --expect 12", 2, "\"12\" is no checksum"},
            {"checksum d/a --format gnu --algorithm crc32", 2, "a list of this format cannot hold crc32"},
            {"checksum --check d/a", 2, "d/a: has no checksums in it"},
            {"checksum", 2, "one path or two are needed, 0 given"},
        };
        for (const auto &[arguments, status, output] : cases) {
            const CliResult result = runCli(arguments);
            QCOMPARE(result.status, status);
            if (status < 2)
                QCOMPARE(result.output, output);
            else
                QVERIFY2(result.errors.startsWith("velmora-cli: " + output), result.errors.constData());
        }
    }

    void checksWhatItHasWritten()
    {
        QCOMPARE(runCli("checksum d --format gnu --output d/list").status, 0);
        const CliResult same = runCli("checksum --check d/list");
        QCOMPARE(same.status, 0);
        QVERIFY2(same.output.startsWith("Total: 2 | Ok: 2 |"), same.output.constData());
        CliFiles::write("d/b", "y");
        CliFiles::write("d/c", "");
        QVERIFY(QFile::remove(word("d/a")));
        const CliResult other = runCli("checksum --check d/list d");
        QCOMPARE(other.status, 1);
        QVERIFY2(other.output.startsWith("missing: a\ndiffers: b\nnotListed: c\n"), other.output.constData());
        // The lists of packages lie below the folder that their names start from.
        QVERIFY(QDir().mkpath(word("info/sums")));
        CliFiles::write("info/sums/list", "415290769594460e2e485922904f345d  d/b\n");
        const CliResult above = runCli("checksum --check info/sums/list");
        QCOMPARE(above.status, 0);
        QVERIFY2(above.output.startsWith("Total: 1 | Ok: 1 |"), above.output.constData());
    }

private:
    std::optional<CliFiles> m_files;
};

VELMORA_TEST(ChecksumCommandTest)
#include "checksum_command_test.moc"
