#include "session/diff_colours.h"
#include "session/pane/syntax_colouring.h"
#include "session/theme.h"
#include "support/test_main.h"
#include "text_session/edit_fixture.h"
#include "text_session/row_picture.h"
#include "text_syntax/syntax_pictures.h"

#include <QAction>
#include <QSignalSpy>

using namespace velmora;
using namespace velmora::test;

namespace {

std::shared_ptr<const DiffDocument> documentOf(std::shared_ptr<const LineSource> left)
{
    return std::make_shared<DiffDocument>(QList<AlignedRow>(), std::move(left), sourceOf({}));
}

/// Colours lines as a frame does, and returns the picture of the last one.
QString frame(SyntaxColouring &colouring, qsizetype first, qsizetype last)
{
    QString drawn;
    colouring.beginFrame();
    for (qsizetype line = first; line <= last; ++line)
        drawn = picture(colouring.tokensOf(line));
    colouring.endFrame();
    return drawn;
}

QString typeOf(PaneScene &scene, Side side)
{
    const auto &definition = scene.colouring(side).definition();
    return definition ? definition->name : QString();
}

/// How many pixels of a pane have the colour, about.
int pixelsIn(TextPane &pane, const QColor &colour)
{
    QImage image(pane.size(), QImage::Format_RGB32);
    pane.render(&image);
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor pixel = image.pixelColor(x, y);
            if (std::abs(pixel.red() - colour.red()) + std::abs(pixel.green() - colour.green()) +
                    std::abs(pixel.blue() - colour.blue()) <
                40)
                ++count;
        }
    }
    return count;
}

} // namespace

class SyntaxColouringTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void linesInSightAreColouredAtOnceAndOthersNotRead()
    {
        const auto source = std::make_shared<CountingSource>(QByteArray("int x;\n").repeated(500'000));
        SyntaxColouring colouring(Side::Left);
        colouring.setDefinition(library().named(QStringLiteral("C/C++")));
        colouring.setDocument(documentOf(source));
        source->fetched = 0;
        QCOMPARE(frame(colouring, 0, 60), QStringLiteral("ttt"));
        QCOMPARE(frame(colouring, 3, 63), QStringLiteral("ttt"));
        QVERIFY(source->fetched < 200);
        colouring.setDefinition(nullptr);
        QCOMPARE(frame(colouring, 0, 60), QString());
        colouring.setDefinition(library().named(QStringLiteral("Diff")));
        QCOMPARE(frame(colouring, 0, 60), QString());
    }

    void colourFollowsAJumpAcrossTheText()
    {
        QByteArray text("/* open\n");
        text += QByteArray("still in the comment\n").repeated(300'000);
        text += "*/ int\nint\n";
        SyntaxColouring colouring(Side::Left);
        const QSignalSpy arrived(&colouring, &SyntaxColouring::arrived);
        colouring.setDefinition(library().named(QStringLiteral("C/C++")));
        colouring.setDocument(documentOf(sourceOf(text)));
        QCOMPARE(frame(colouring, 299'980, 300'001), QString()); // not a guess either
        QTRY_COMPARE_WITH_TIMEOUT(frame(colouring, 299'980, 300'001), QStringLiteral("cc ttt"), 60'000);
        QVERIFY(!arrived.isEmpty());
        QCOMPARE(frame(colouring, 300'002, 300'002), QStringLiteral("ttt"));
    }

    void longLinesAreColouredFrameByFrame()
    {
        const QByteArray line = QByteArray("f(\"x\"); ").repeated(2000) + '\n';
        SyntaxColouring colouring(Side::Left);
        const QSignalSpy arrived(&colouring, &SyntaxColouring::arrived);
        colouring.setDefinition(library().named(QStringLiteral("C/C++")));
        colouring.setDocument(documentOf(sourceOf(line.repeated(60))));
        const qsizetype before = arrived.size();
        QCOMPARE(frame(colouring, 0, 59), QString());
        QTRY_VERIFY(arrived.size() > before);
        int frames = 1;
        while (frame(colouring, 0, 59).isEmpty())
            QVERIFY(++frames < 20);
        QVERIFY(frames > 1);
    }

    void theTypeIsThatOfTheOptionsOrOfTheFile()
    {
        SessionFixture f;
        for (const auto &[name, text] :
             {std::pair("a.py", "x = 1\n"), std::pair("b.rs", "x = 1\n"), std::pair("a.old", "x = 1\n"),
              std::pair("a", "#!/bin/sh\n"), std::pair("b", "text\n")})
            f.file(name, text);
        const auto types = [&f](const char *left, const char *right) {
            f.compare(f.path(left), f.path(right));
            return typeOf(f.scene(), Side::Left) + u'|' + typeOf(f.scene(), Side::Right);
        };
        QCOMPARE(types("a.py", "b.rs"), word("Python|Rust"));
        QCOMPARE(types("a.py", "a.old"), word("Python|Python"));
        QCOMPARE(types("a", "b"), word("Shell|Shell"));
        f.setOptions(R"({"leftFileType": "SQL", "rightFileType": "Everything else", "sameAsLeftFileFormat": false})");
        QCOMPARE(types("a.py", "b.rs"), word("SQL|Rust"));
        f.setOptions(R"({"leftFileType": "A type from elsewhere", "sameAsLeftFileFormat": true})");
        QCOMPARE(types("a.py", "b.rs"), word("|"));
    }

    void typingColoursTheLinesBehind()
    {
        SessionFixture f;
        const QByteArray text = "one\n" + QByteArray("int\n").repeated(1200);
        f.compare(f.file("a.cpp", text), f.file("b.cpp", text));
        f.session.show();
        f.session.setEditingEnabled(true);
        DiffView &view = f.session.view();
        QCOMPARE(frame(view.scene().colouring(Side::Left), 1000, 1010), QStringLiteral("ttt"));
        QTest::keyClicks(&view.pane(Side::Left), QStringLiteral("/*"));
        QCOMPARE(frame(view.scene().colouring(Side::Left), 1000, 1010), QStringLiteral("ccc"));
        QCOMPARE(frame(view.scene().colouring(Side::Right), 1000, 1010), QStringLiteral("ttt"));
        QTest::keyClicks(&view.pane(Side::Left), QStringLiteral("*/"));
        QTest::keyClick(&view.pane(Side::Left), Qt::Key_Return);
        QCOMPARE(frame(view.scene().colouring(Side::Left), 1000, 1010), QStringLiteral("ttt"));
    }

    void keywordsShowTheirInkUntilSwitchedOff()
    {
        SessionFixture f;
        const QByteArray text = QByteArray("return return return return\n").repeated(20);
        f.compare(f.file("a.cpp", text), f.file("b.cpp", text));
        f.session.show();
        const QColor ink = syntaxInks(isDarkTheme())[std::size_t(SyntaxRole::Keyword)];
        const qreal usualSize = f.session.view().fontPointSize();
        f.session.view().setFontPointSize(30); // a thin font shows its ink unmixed only when it is large
        TextPane &pane = f.session.view().pane(Side::Left);
        const int inked = pixelsIn(pane, ink);
        QVERIFY(inked > 500);
        auto *toggle = f.child<QAction>("syntaxColoursAction");
        toggle->trigger();
        QVERIFY(pixelsIn(pane, ink) < 50);
        {
            SessionFixture next;
            QVERIFY(!next.session.view().scene().showsSyntax());
        }
        toggle->trigger();
        QCOMPARE(pixelsIn(pane, ink), inked);
        f.session.view().setFontPointSize(usualSize); // is remembered
    }
};

VELMORA_TEST(SyntaxColouringTest)
#include "syntax_colouring_test.moc"
