#include "filetypes/image/engine/anti_aliasing.h"
#include "filetypes/image/engine/image_levels.h"
#include "filetypes/image/engine/picture_file.h"
#include "filetypes/image/engine/pixel_rows.h"
#include "filetypes/image/image_compare_widget.h"
#include "filetypes/image/image_label.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QDir>
#include <QImageReader>
#include <QImageWriter>
#include <QLabel>
#include <QMouseEvent>
#include <QRandomGenerator>
#include <QSignalSpy>
#include <QSlider>
#include <QTemporaryDir>
#include <QTest>
#include <QWheelEvent>

using namespace velmora;
using namespace velmora::test;

namespace {

constexpr qint64 plenty = qint64(1) << 30;

QImage filled(int width, int height, QRgb colour)
{
    QImage image(width, height, QImage::Format_ARGB32);
    image.fill(colour);
    return image;
}

DifferenceMap mapOf(const QImage &left, const QImage &right, const DifferenceOptions &options = {})
{
    Progress progress;
    return differenceMap(left, right, options, {}, progress);
}

class ImageFixture {
public:
    ImageFixture()
    {
        session.resize(900, 700);
        session.show();
    }
    QString save(const char *name, const QImage &image) const
    {
        const QString path = folder.filePath(word(name));
        if (!image.save(path))
            qFatal("cannot write %s", name);
        return path;
    }
    [[nodiscard]] QString text(const char *label) const
    {
        return session.findChild<QLabel *>(QLatin1String(label))->text();
    }
    [[nodiscard]] ImageLabel *label(const char *name) const
    {
        return session.findChild<ImageLabel *>(QLatin1String(name));
    }
    void trigger(const char *action) { session.findChild<QAction *>(QLatin1String(action))->trigger(); }
    void compare(const QString &left, const QString &right)
    {
        session.setPaths({left, right, {}});
        session.start();
    }

    QTemporaryDir folder;
    RecordingHost host;
    ScriptedDialogs dialogs;
    ImageCompareWidget session{host};
};

} // namespace

class ImageTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSmallerCopyHasTheMeansOfFourPixels()
    {
        QRandomGenerator random(11);
        for (int width = 1; width < 24; ++width) {
            QImage image(width, 1 + width % 5, QImage::Format_ARGB32);
            random.fillRange(reinterpret_cast<quint32 *>(image.bits()), qsizetype(width) * image.height());
            const QImage half = halfImage(image);
            QCOMPARE(half.size(), QSize(width / 2, image.height() / 2).expandedTo({1, 1}));
            for (int at = 0; at < half.width() * half.height() * 4; ++at) {
                const int x = at / 4 % half.width();
                const int y = at / 4 / half.width();
                int sum = 2;
                for (const QPoint of : {QPoint(0, 0), QPoint(1, 0), QPoint(0, 1), QPoint(1, 1)}) {
                    const QPoint place(std::min(2 * x + of.x(), width - 1),
                                       std::min(2 * y + of.y(), image.height() - 1));
                    sum += int(image.pixel(place) >> unsigned(at % 4 * 8) & 0xFFU);
                }
                QCOMPARE(int(half.pixel(x, y) >> unsigned(at % 4 * 8) & 0xFFU), sum / 4);
            }
        }
    }

    /// The map as its definition has it, pixel by pixel, for pictures of any two sizes.
    void mapAgreesWithItsDefinition()
    {
        QRandomGenerator random(7);
        for (int round = 0; round < 40; ++round) {
            const auto picture = [&] {
                QImage image(random.bounded(1, 150), random.bounded(1, 80), QImage::Format_ARGB32);
                for (int y = 0; y < image.height(); ++y)
                    for (int x = 0; x < image.width(); ++x)
                        image.setPixel(
                            x, y, random.bounded(20) ? 0xFF405060 + quint32(random.bounded(3)) : random.generate());
                return image;
            };
            const QImage left = picture();
            const QImage right = picture();
            const DifferenceOptions options{random.bounded(51), false};
            const DifferenceMap map = mapOf(left, right, options);
            QCOMPARE(map.image.size(), left.size().expandedTo(right.size()));
            qint64 different = 0;
            int largest = 0;
            for (int y = 0; y < map.image.height(); ++y) {
                for (int x = 0; x < map.image.width(); ++x) {
                    const bool inLeft = left.valid(x, y);
                    const bool inRight = right.valid(x, y);
                    QRgb expected = inLeft ? 0xFFFF5050 : inRight ? 0xFF50C850 : 0xFF000000;
                    if (inLeft && inRight) {
                        const QColor l(left.pixel(x, y));
                        const QColor r(right.pixel(x, y));
                        const int apart = std::max({std::abs(l.red() - r.red()), std::abs(l.green() - r.green()),
                                                    std::abs(l.blue() - r.blue())});
                        const int grey = (11 * l.red() + 16 * l.green() + 5 * l.blue()) / 64;
                        expected = apart > options.tolerance ? 0xFFFF0000 : qRgb(grey, grey, grey);
                        different += apart > options.tolerance ? 1 : 0;
                        largest = std::max(largest, apart);
                    }
                    QCOMPARE(map.image.pixel(x, y), expected);
                    const bool isMarked = std::any_of(map.regions.begin(), map.regions.end(),
                                                      [&](const QRect &part) { return part.contains(x, y); });
                    if (expected == 0xFFFF0000 || inLeft != inRight)
                        QVERIFY2(isMarked, "every difference lies in a region");
                }
            }
            QCOMPARE(map.different, different);
            QCOMPARE(map.largestDeviation, largest);
            QCOMPARE(map.common + map.leftOnly, qint64(left.width()) * left.height());
            QCOMPARE(map.common + map.rightOnly, qint64(right.width()) * right.height());
        }
    }

    void regionsAreWhatLiesTogether()
    {
        const QImage left = filled(400, 300, 0xFF808080);
        QImage right = left;
        for (const QPoint spot : {QPoint(5, 7), QPoint(40, 9), QPoint(300, 5), QPoint(399, 299)})
            right.setPixel(spot, 0xFF000000);
        QCOMPARE(mapOf(left, right).regions, (QList<QRect>{{300, 5, 1, 1}, {5, 7, 36, 3}, {399, 299, 1, 1}}));
        QCOMPARE(mapOf(left, left).regions, QList<QRect>());
        CancelFlag cancel;
        cancel.cancel();
        Progress progress;
        QVERIFY(differenceMap(left, right, {}, cancel, progress).image.isNull());
    }

    /// The smoothed edge of a line that has moved by less than a pixel is left out, a shape of its own is not.
    void smoothedEdgesCanBeLeftOut()
    {
        QImage left = filled(40, 40, 0xFFFFFFFF);
        QImage right = left;
        for (int y = 0; y < 40; ++y) {
            for (int x = 0; x < 20; ++x) {
                left.setPixel(x, y, 0xFF000000);
                right.setPixel(x, y, 0xFF000000);
            }
            left.setPixel(20, y, 0xFF404040);
            right.setPixel(20, y, 0xFF909090);
        }
        for (int i = 0; i < 9; ++i)
            right.setPixel(30 + i % 3, 10 + i / 3, 0xFF000000);
        QCOMPARE(mapOf(left, right).different, 49);
        const DifferenceMap map = mapOf(left, right, {0, true});
        QCOMPARE(map.different + map.antiAliased, 49);
        QVERIFY2(map.different == 9, qPrintable(QString::number(map.different)));
        QCOMPARE(map.image.pixel(20, 20), mapColour::antiAliased);
    }

    void loadsEveryFormatAndSaysWhatIsWrong_data()
    {
        QTest::addColumn<QByteArray>("format");
        for (const char *format : {"png", "jpg", "bmp", "gif", "tiff", "webp"})
            QTest::newRow(format) << QByteArray(format);
    }

    void loadsEveryFormatAndSaysWhatIsWrong()
    {
        QFETCH(QByteArray, format);
        if (!QImageReader::supportedImageFormats().contains(format))
            QSKIP("its plug-in is missing here");
        QTemporaryDir folder;
        // There is no writer for this one.
        const QByteArray gif =
            QByteArray::fromHex("47494638396103000200800000ff0000ffffff2c0000000003000200000203448e05003b");
        const QString path = folder.filePath(word("p.dat")); // the contents tell, not the name
        if (format == "gif")
            QVERIFY(makeFile(path, gif));
        else
            QVERIFY(QImageWriter(path, format).write(filled(3, 2, 0xFFFF0000)));
        const Picture whole = loadPicture(path, 0, plenty);
        QCOMPARE(whole.fault, PictureFault::None);
        QCOMPARE(whole.image.size(), QSize(3, 2));
        QCOMPARE(whole.image.format(), QImage::Format_ARGB32);
        QCOMPARE(loadPicture(path, 0, 24).fault, PictureFault::TooLarge);

        const QByteArray bytes = contentsOf(path);
        QVERIFY(!whole.isCutOff);
        // Most of a picture is either refused or said to lack its end.
        const QByteArray most = bytes.first(bytes.size() - 2);
        QVERIFY(makeFile(path, most));
        const Picture torn = loadPicture(path, 0, plenty);
        QVERIFY2(!torn.isLoaded() || torn.isCutOff || format == "tiff" || format == "png", "a cut file is noticed");
        if (format == "bmp") {
            QVERIFY(makeFile(path, bytes.first(bytes.size() - 12))); // the lines come from below
            QCOMPARE(loadPicture(path, 0, plenty).image.pixel(0, 0), QRgb(0xFF000000));
        }
        QRandomGenerator random(11);
        for (int round = 0; round < 60; ++round) {
            QByteArray damaged = round < 20 ? bytes.first(bytes.size() * round / 20) : bytes;
            for (int i = 0; round >= 20 && i < 1 + round / 12; ++i)
                damaged[random.bounded(damaged.size())] = char(random.generate());
            QVERIFY(makeFile(path, damaged));
            const Picture picture = loadPicture(path, round % 3, plenty);
            QCOMPARE(picture.isLoaded(), picture.fault == PictureFault::None);
        }
        QCOMPARE(loadPicture(folder.path(), 0, plenty).fault, PictureFault::NotOpened);
    }

    void showsTwoImagesAndWhatDiffers()
    {
        ImageFixture fixture;
        QSignalSpy titles(&fixture.session, &SessionWidget::tabTitleChanged);
        QSignalSpy finished(&fixture.session, &SessionWidget::comparisonFinished);
        QImage image = filled(300, 200, 0xFF204060);
        const QString one = fixture.save("one.png", image);
        image.setPixel(200, 150, 0xFF204065);
        const QString two = fixture.save("two.png", image);
        QCOMPARE(fixture.text("leftCaption"), word("Left: (not loaded)"));

        fixture.compare(one, two);
        QTRY_COMPARE(fixture.text("statusLabel"), word("Same size (tolerance 0)"));
        QCOMPARE(fixture.text("leftCaption"), word("Left: 300x200  ") + QDir::toNativeSeparators(one));
        QCOMPARE(titles.last().first(), word("one.png <-> two.png"));
        QCOMPARE(finished.size(), 1);
        QCOMPARE(fixture.text("imageVerdictText"),
                 word("1 pixels differ (less than 0.01 %) in one region. Largest deviation: 5."));
        fixture.trigger("nextAction");
        QCOMPARE(fixture.text("statusLabel"), word("Difference 1 of 1: 1 × 1 pixels at (200, 150)"));

        fixture.session.findChild<QSlider *>(word("toleranceSlider"))->setValue(5);
        QTRY_COMPARE(fixture.text("statusLabel"), word("已按容差 5 重算差异"));
        QCOMPARE(fixture.text("toleranceValue"), word("5 "));
        QVERIFY(fixture.text("imageVerdictText").startsWith(word("No pixel differs by more than the tolerance.")));

        const QString small = fixture.save("small.png", filled(10, 7, 0xFF204060));
        fixture.compare(one, small);
        QTRY_COMPARE(fixture.text("statusLabel"), word("尺寸不同: 300x200 vs 10x7（容差 5）"));
        fixture.trigger("swapAction");
        QCOMPARE(fixture.session.paths().left, small);
        QVERIFY(fixture.text("rightCaption").startsWith(word("Right: 300x200  ")));

        QVERIFY(makeFile(fixture.folder.filePath(word("bad.png")), "no picture"));
        fixture.compare(one, fixture.folder.filePath(word("bad.png")));
        QTRY_COMPARE(fixture.text("statusLabel"), word("Cannot load image"));
        QVERIFY(fixture.text("statusDetail").startsWith(word("No picture, or of an unknown format: ")));
        QVERIFY(!fixture.label("diffImage")->hasImage());
        QVERIFY(fixture.label("leftImage")->hasImage());
    }

    void zoomsAllViewsAndTellsThePixelUnderTheMouse()
    {
        ImageFixture fixture;
        const QString path = fixture.save("one.png", filled(200, 100, 0xFF0A141E));
        fixture.compare(path, path);
        QTRY_COMPARE(fixture.text("imageVerdictText"), word("The files are identical."));
        ImageLabel *left = fixture.label("leftImage");
        const auto wheel = [&](const char *name, int delta, Qt::KeyboardModifiers keys) {
            QWheelEvent event({5, 5}, fixture.label(name)->mapToGlobal(QPointF(5, 5)), {}, {0, delta}, Qt::NoButton,
                              keys, Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(fixture.label(name), &event);
        };
        left->setZoom(2);
        wheel("diffImage", 120, Qt::ControlModifier);
        QVERIFY(qFuzzyCompare(left->zoom(), 2.2) && qFuzzyCompare(fixture.label("rightImage")->zoom(), 2.2));
        wheel("rightImage", 0, Qt::ControlModifier);
        QVERIFY(qFuzzyCompare(left->zoom(), 2.2 * 0.9));
        wheel("leftImage", 120, Qt::NoModifier);
        QVERIFY(qFuzzyCompare(left->zoom(), 2.2 * 0.9));
        QCOMPARE(left->size(), QSize(396, 198));
        for (int i = 0; i < 60; ++i)
            fixture.trigger("zoomInAction");
        QCOMPARE(left->zoom(), 10.0);
        for (int i = 0; i < 60; ++i)
            wheel("leftImage", -120, Qt::ControlModifier);
        QCOMPARE(left->zoom(), 0.1);

        left->setZoom(2);
        QMouseEvent move(QEvent::MouseMove, QPointF(31, 11), left->mapToGlobal(QPointF(31, 11)), Qt::NoButton,
                         Qt::NoButton, Qt::NoModifier);
        QCoreApplication::sendEvent(left, &move);
        QCOMPARE(fixture.text("rightPixelInfo"), word("X:15 Y:5  RGB:10,20,30  A:255"));
        QEvent leave(QEvent::Leave);
        QCoreApplication::sendEvent(left, &leave);
        QCOMPARE(fixture.text("leftPixelInfo"), word("X:  Y:   RGB:  A:"));
    }

    void whatFitsGoesOnToFitUntilItIsZoomed()
    {
        ImageFixture fixture;
        const QString path = fixture.save("one.png", filled(2000, 1000, 0xFF0A141E));
        fixture.compare(path, path);
        QTRY_COMPARE(fixture.text("imageVerdictText"), word("The files are identical."));
        const ImageLabel *left = fixture.label("leftImage");
        const double before = left->zoom();
        fixture.session.resize(1400, 1100);
        QTRY_VERIFY(left->zoom() > 1.3 * before);
        const QSize room = left->parentWidget()->size() - left->size();
        QVERIFY(std::min(room.width(), room.height()) >= 4 && std::min(room.width(), room.height()) <= 6);
        fixture.trigger("zoomInAction");
        const double chosen = left->zoom();
        fixture.session.resize(900, 700);
        QCoreApplication::processEvents();
        QCOMPARE(left->zoom(), chosen);
    }

    void writesTheReportThatWasAskedFor()
    {
        ImageFixture fixture;
        const QString one = fixture.save("one.png", filled(20, 10, 0xFF204060));
        const QString two = fixture.save("two.png", filled(20, 12, 0xFF204060));
        const QString page = fixture.folder.filePath(word("report.html"));
        fixture.session.setPendingReport(page);
        fixture.compare(one, two);
        QTRY_VERIFY(contentsOf(page).endsWith("</body></html>\n"));
        const QByteArray html = contentsOf(page);
        QVERIFY(html.contains("40 pixels differ (16.67 %) in one region."));
        QCOMPARE(html.count("data:image/png;base64,iVBOR"), 3); // the map and both images
        QVERIFY(html.contains("<img alt=\"Right original\" src"));
    }
};

VELMORA_TEST(ImageTest)
#include "image_test.moc"
