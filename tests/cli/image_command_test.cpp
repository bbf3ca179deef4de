#include "cli_fixture.h"
#include "support/test_main.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace velmora;
using namespace velmora::test;

namespace {

/// A picture of one row of opaque pixels in one of the simplest formats that there are.
QByteArray bitmap(const QByteArray &pixels)
{
    const auto number = [](quint32 value) {
        QByteArray bytes;
        for (int i = 0; i < 4; ++i)
            bytes.append(char(value >> unsigned(8 * i)));
        return bytes;
    };
    const auto width = quint32(pixels.size() / 4);
    return "BM" + number(54 + quint32(pixels.size())) + number(0) + number(54) + number(40) + number(width) +
           number(1) + QByteArray("\1\0\x20\0", 4) + number(0) + number(quint32(pixels.size())) + number(2835) +
           number(2835) + number(0) + number(0) + pixels;
}

} // namespace

class ImageCommandTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
#ifndef VELMORA_CLI_HAS_IMAGES
        QSKIP("built without Qt Gui");
#endif
    }

    void answersByOutputAndStatus()
    {
        const CliFiles files;
        CliFiles::write("l.bmp", bitmap(QByteArray("\x10\x20\x30\xFF\x10\x20\x30\xFF", 8)));
        CliFiles::write("r.bmp", bitmap(QByteArray("\x10\x20\x30\xFF\x10\x20\x35\xFF\0\0\0\xFF", 12)));
        CliFiles::write("x.bmp", "BM no picture");
        CliFiles::write("x.png", "\x89PNG\r\n\x1A\n no picture");
        const struct {
            QByteArray arguments;
            int status;
            QByteArray output; ///< how it or the error begins
        } cases[] = {
            {"image l.bmp l.bmp", 0,
             "Pixels: 2 | Different: 0 | Left only: 0 | Right only: 0 | Regions: 0 | Largest deviation: 0 | Identical "
             "files\n"},
            {"image l.bmp r.bmp", 1,
             "Pixels: 3 | Different: 1 | Left only: 0 | Right only: 1 | Regions: 1 | Largest deviation: 5\n"},
            {"image --tolerance 5 r.bmp l.bmp", 1, "Pixels: 3 | Different: 0 | Left only: 1 |"},
            {"image --format png l.bmp r.bmp", 1, "\x89PNG"},
            {"image l.bmp none.bmp", 2, "none.bmp: cannot be read"},
            {"image l.bmp x.bmp", 2, "x.bmp: is "},
            {"image l.bmp x.png", 2, "x.png: is damaged or cut off"},
            {"image --tolerance 256 l.bmp r.bmp", 2, "--tolerance takes no such number"},
            {"image l.bmp", 2, "two paths are needed, 1 given"},
        };
        for (const auto &[arguments, status, output] : cases) {
            const CliResult result = runCli(arguments);
            QCOMPARE(result.status, status);
            QVERIFY2(result.errors.count('\n') == (status < 2 ? 0 : 1), result.errors.constData());
            const QByteArray &said = status < 2 ? result.output : result.errors;
            QVERIFY2(said.startsWith(status < 2 ? output : "velmora-cli: " + output), said.constData());
        }
        const CliResult json = runCli("image --format json l.bmp r.bmp");
        const QJsonObject object = QJsonDocument::fromJson(json.output).object();
        QCOMPARE(object.value(word("different")).toInt(), 1);
        QCOMPARE(object.value(word("right")).toObject().value(word("width")).toInt(), 3);
    }
};

VELMORA_TEST(ImageCommandTest)
#include "image_command_test.moc"
