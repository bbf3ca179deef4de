#include "filetypes/binary/binary_compare_widget.h"
#include "filetypes/binary/binary_hex_view.h"
#include "filetypes/binary/hex_colours.h"
#include "session/diff_colours.h"
#include "support/contrast.h"
#include "support/files.h"
#include "support/recording_host.h"
#include "support/scripted_dialogs.h"
#include "support/test_main.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeView>

using namespace velmora;
using namespace velmora::test;

namespace {

class HexFixture {
public:
    HexFixture()
    {
        session.resize(1300, 600);
        session.show();
    }

    QString file(const char *name, const QByteArray &bytes) const
    {
        const QString path = folder.filePath(word(name));
        if (!makeFile(path, bytes))
            qFatal("cannot write %s", name);
        return path;
    }
    /// Compares two files of these contents; false when that does not come to its end.
    bool compare(const QByteArray &left, const QByteArray &right)
    {
        session.setPaths({file("left", left), file("right", right), {}});
        return compareAgain();
    }
    bool compareAgain()
    {
        QSignalSpy finished(&session, &SessionWidget::comparisonFinished);
        session.start();
        return finished.wait(20'000);
    }
    [[nodiscard]] QString status() const { return label("statusLabel"); }
    [[nodiscard]] QString label(const char *name) const
    {
        return session.findChild<QLabel *>(QLatin1String(name))->text();
    }
    [[nodiscard]] QAction *action(const char *name) const { return session.findChild<QAction *>(QLatin1String(name)); }
    [[nodiscard]] BinaryHexView *view(const char *name) const
    {
        return session.findChild<BinaryHexView *>(QLatin1String(name));
    }
    [[nodiscard]] QImage picture(const char *name) const { return view(name)->viewport()->grab().toImage(); }

    QTemporaryDir folder;
    RecordingHost host;
    ScriptedDialogs dialogs;
    BinaryCompareWidget session{host};
};

} // namespace

class BinarySessionTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void comparesAndSteps()
    {
        HexFixture hex;
        QSignalSpy title(&hex.session, &SessionWidget::tabTitleChanged);
        const QByteArray bytes(16 * 1'000, 'a');
        QByteArray other = bytes;
        other[5] = other[16 * 500] = other[16 * 999] = 'b';
        QVERIFY(hex.compare(bytes, other));
        QCOMPARE(hex.status(), word("Compare done: left 16000 bytes, right 16000 bytes, 3 diffs | diff rate: 0%"));
        QCOMPARE(title.at(0).at(0).toString(), word("left <-> right"));
        QScrollBar *left = hex.view("leftView")->verticalScrollBar();
        QScrollBar *right = hex.view("rightView")->verticalScrollBar();
        const int shown = left->pageStep();
        QCOMPARE(left->maximum(), 1'000 - shown);
        const std::pair<const char *, int> steps[] = {{"previousAction", 0},
                                                      {"nextAction", 500 - shown / 2},
                                                      {"nextAction", 1'000 - shown},
                                                      {"nextAction", 1'000 - shown},
                                                      {"previousAction", 500 - shown / 2}};
        for (const auto &[action, top] : steps) {
            hex.action(action)->trigger();
            QCOMPARE(left->value(), top);
            QCOMPARE(right->value(), top);
        }
        QCOMPARE(hex.status(), word("Diff 2/3"));
        right->setValue(7);
        QCOMPARE(left->value(), 7);
        QVERIFY(hex.compare(bytes, bytes));
        QCOMPARE(hex.status(), word("Compare done: files are identical"));
        QVERIFY(!hex.action("nextAction")->isEnabled());
    }

    void saysWhatIsWrong()
    {
        HexFixture hex;
        QCOMPARE(hex.status(), word("Ready"));
        hex.session.start();
        QCOMPARE(hex.status(), word("Select two files to compare"));
        const QString there = hex.file("there", "x");
        QFile large(hex.file("large", {}));
        QVERIFY(large.open(QIODevice::ReadWrite) && large.resize(137'438'953'473));
        const std::tuple<QString, QString, const char *> cases[] = {
            {hex.folder.filePath(word("none")), there, "Cannot open left file"},
            {there, hex.folder.path(), "Cannot open right file"},
            {there, large.fileName(), "File too large (limit 128 GB). Use folder compare or checksum first"},
        };
        for (const auto &[left, right, message] : cases) {
            hex.session.setPaths({left, right, {}});
            hex.session.start();
            QTRY_COMPARE(hex.status(), word(message));
            const QString failed = left == there ? right : left;
            QCOMPARE(hex.label("statusDetail"), QDir::toNativeSeparators(failed));
        }
        // What is as large as may be is compared; that can be cancelled by the button that began it.
        QVERIFY(large.resize(137'438'953'472));
        hex.action("compareAction")->trigger();
        QCOMPARE(hex.action("compareAction")->text(), word("Cancel"));
        hex.action("compareAction")->trigger();
        QTRY_COMPARE(hex.status(), word("Compare cancelled"));
        QCOMPARE(hex.action("compareAction")->text(), word("Binary compare"));
    }

    void takesDroppedPaths()
    {
        HexFixture hex;
        const int right = hex.session.width() - 20;
        hex.session.dropPaths({word("/one")}, {right, 300});
        QCOMPARE(hex.session.paths(), (SessionPaths{{}, word("/one"), {}}));
        hex.session.dropPaths(words("/a|/b|/c"), {right, 300});
        QCOMPARE(hex.session.paths(), (SessionPaths{word("/a"), word("/b"), {}}));
        QCOMPARE(hex.status(), word("Paths loaded — click Binary compare to start"));
    }

    void marksRowsAndBytesThatDiffer()
    {
        HexFixture hex;
        QByteArray bytes(16 * 40, 'a');
        QByteArray other = bytes + "more";
        other[16 * 3 + 2] = 'b';
        QVERIFY(hex.compare(bytes, other));
        const QImage left = hex.picture("leftView");
        const QImage right = hex.picture("rightView");
        const HexGeometry &rows = hex.view("leftView")->geometryOfRows();
        const auto tick = [&](const QImage &image, int row) {
            return image.pixelColor(1, row * rows.rowHeight() + 1) == differingRowColour(false);
        };
        for (int row = 0; row < 20; ++row)
            QCOMPARE(tick(left, row), row == 3);
        const auto ground = [&](const QImage &image, int row, int column) {
            return image.pixelColor(rows.hexCell(column).left() - 1, row * rows.rowHeight() + 1);
        };
        QCOMPARE(ground(left, 3, 2), diffColour(DiffColour::Modified));
        QCOMPARE(ground(left, 3, 3), diffColour(DiffColour::Background));
        // The program goes on when the files shrink while they are shown; what is gone is blank.
        QVERIFY(QFile::resize(hex.folder.filePath(word("left")), 16 * 10));
        QVERIFY(QFile::resize(hex.folder.filePath(word("right")), 0));
        QVERIFY(hex.picture("leftView") != left);
        QVERIFY(hex.picture("rightView") != right);
        QCOMPARE(ground(hex.picture("leftView"), 1, 5), diffColour(DiffColour::Modified));
        QCOMPARE(ground(hex.picture("leftView"), 12, 5), diffColour(DiffColour::Filler));
    }

    void selectsAndCopiesByKeys()
    {
        HexFixture hex;
        QVERIFY(hex.compare("Hello, world. " + QByteArray(100, '\0'), QByteArray(300, 'x')));
        BinaryHexView *left = hex.view("leftView");
        left->setFocus();
        QTest::keyClick(left, Qt::Key_Home);
        for (int k = 0; k < 4; ++k)
            QTest::keyClick(left, Qt::Key_Right, Qt::ShiftModifier);
        QCOMPARE(hex.label("placeLabel"), word("0x4 (4) | 5 bytes selected"));
        const std::pair<const char *, const char *> forms[] = {
            {"copyAction", "48 65 6C 6C 6F"},
            {"copyTextAction", "Hello"},
            {"copyArrayAction", "const unsigned char data[5] = {\n    0x48, 0x65, 0x6C, 0x6C, 0x6F,\n};\n"}};
        for (const auto &[action, text] : forms) {
            hex.action(action)->trigger();
            QCOMPARE(QApplication::clipboard()->text(), word(text));
        }
        const std::tuple<Qt::Key, Qt::KeyboardModifiers, const char *> moves[] = {
            {Qt::Key_End, Qt::NoModifier, "0xF (15)"},      {Qt::Key_Down, Qt::NoModifier, "0x1F (31)"},
            {Qt::Key_Up, Qt::NoModifier, "0xF (15)"},       {Qt::Key_End, Qt::ControlModifier, "0x71 (113)"},
            {Qt::Key_Right, Qt::NoModifier, "0x71 (113)"},  {Qt::Key_PageDown, Qt::NoModifier, "0x71 (113)"},
            {Qt::Key_Home, Qt::ControlModifier, "0x0 (0)"}, {Qt::Key_Left, Qt::NoModifier, "0x0 (0)"}};
        for (const auto &[key, modifiers, place] : moves) {
            QTest::keyClick(left, key, modifiers);
            QCOMPARE(hex.label("placeLabel"), word(place));
        }
        hex.dialogs.answerText(word("0x72"));
        hex.action("goToOffsetAction")->trigger();
        QCOMPARE(hex.label("placeLabel"), word("0x71 (113)"));
        QCOMPARE(hex.status(), word("0x72 is behind the end of this side, which has 114 bytes"));
    }

    void alignsAndShiftsTheSides()
    {
        HexFixture hex;
        const QByteArray text = QByteArray("All is fair in love and war, they say. ").repeated(3);
        const QByteArray left = text + QByteArray(100, '\1') + text;
        QVERIFY(hex.compare(left, "12345" + left));
        hex.action("showListAction")->trigger();
        QSignalSpy finished(&hex.session, &SessionWidget::comparisonFinished);
        hex.action("alignAction")->trigger();
        QVERIFY(finished.wait(20'000));
        QCOMPARE(hex.status(), word("Compare done: left 334 bytes, right 339 bytes, 1 differing ranges | changed 0, "
                                    "inserted 1, deleted 0"));
        const QAbstractItemModel *list = hex.session.findChild<QTreeView *>(word("differenceList"))->model();
        QCOMPARE(list->rowCount(), 1);
        QCOMPARE(list->index(0, 0).data().toString(), word("inserted"));
        QCOMPARE(list->index(0, 4).data().toString(), word("5"));
        hex.action("nextAction")->trigger();
        QCOMPARE(hex.status(), word("Diff 1/1"));
        QVERIFY(hex.view("rightView")->hasFocus());
        QTest::keyClick(hex.view("rightView"), Qt::Key_Down); // into the row that both sides have
        QCOMPARE(hex.label("placeLabel"), word("0x5 (5)"));
        hex.action("alignAction")->trigger();
        QVERIFY(finished.wait(20'000));
        hex.dialogs.answerText(word("5"));
        hex.view("rightView")->setFocus();
        QTest::keyClick(hex.view("rightView"), Qt::Key_Home, Qt::ControlModifier);
        hex.action("goToOffsetAction")->trigger();
        QCOMPARE(hex.label("placeLabel"), word("0x5 (5)"));
        hex.action("startHereAction")->trigger();
        QVERIFY(finished.wait(20'000));
        QCOMPARE(hex.status(), word("Compare done: files are identical"));
        const QJsonObject options = hex.session.options();
        QCOMPARE(options.value(word("rightStart")).toInt(), 5);
        BinaryCompareWidget other(hex.host);
        other.setOptions(options);
        QCOMPARE(other.options(), options);
    }

    void findsBytesAndText()
    {
        HexFixture hex;
        const QByteArray zeros(3'000'000, '\0');
        QVERIFY(hex.compare(zeros + "needle" + zeros + "needle", "x"));
        hex.view("leftView")->setFocus();
        hex.action("findAction")->trigger();
        auto *text = hex.session.findChild<QLineEdit *>(word("findText"));
        auto *form = hex.session.findChild<QComboBox *>(word("findForm"));
        const std::tuple<int, const char *, const char *, const char *> searches[] = {
            {1, "needle", "findNextAction", "0x2DC6C0 (3,000,000) | 6 bytes selected"},
            {0, "6E 65 65", "findNextAction", "0x5B8D86 (6,000,006) | 3 bytes selected"},
            {0, "6e6565", "findNextAction", "0x2DC6C0 (3,000,000) | 3 bytes selected"},
            {1, "needle", "findPreviousAction", "0x5B8D86 (6,000,006) | 6 bytes selected"},
            {1, "needle", "findPreviousAction", "0x2DC6C0 (3,000,000) | 6 bytes selected"},
        };
        for (const auto &[index, words, action, place] : searches) {
            form->setCurrentIndex(index);
            text->setText(word(words));
            hex.action(action)->trigger();
            QTRY_COMPARE(hex.label("placeLabel"), word(place));
        }
        const std::tuple<int, const char *, const char *> failures[] = {
            {2, "needle", "Not found"}, {0, "6", "Pairs of hexadecimal digits are needed, as in \"4D 5A\""}};
        for (const auto &[index, words, message] : failures) {
            form->setCurrentIndex(index);
            text->setText(word(words));
            hex.action("findNextAction")->trigger();
            QTRY_COMPARE(hex.label("findMessage"), word(message));
        }
    }

    void colourOfDifferingBytesIsReadable()
    {
        for (const bool dark : {false, true}) {
            for (const DiffColour ground : {DiffColour::Modified, DiffColour::Added, DiffColour::Removed})
                QVERIFY(contrast(differingByteColour(dark), diffColour(ground, dark)) >= 4.5);
            QVERIFY(contrast(differingRowColour(dark), diffColour(DiffColour::Background, dark)) >= 3);
        }
    }
};

VELMORA_TEST(BinarySessionTest)
#include "binary_session_test.moc"
