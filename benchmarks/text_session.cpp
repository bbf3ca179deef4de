// What an open text session costs: a million lines beside ten thousand, measured offscreen in one process.
//
//   benchmark_text_session        prints a table; the exit status is 1 when a bound is passed

#include "platform/thread_end.h"
#include "session/pane/text_pane.h"
#include "session/session_host.h"
#include "session/session_record.h"
#include "text/text_compare_widget.h"
#include "text/view/diff_view.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <memory>
#include <vector>

#ifdef Q_OS_LINUX
#include <unistd.h>
#endif

using namespace velmora;

namespace {

constexpr int fewLines = 10'000;
constexpr int manyLines = 1'000'000;
constexpr int frames = 200;

// What a larger text may cost.
constexpr double mostForDelivery = 2;
constexpr double mostForAFrame = 2;
constexpr double mostForACharacter = 3;
constexpr double mostMemory = 6;

class NoWindow final : public SessionHost {
public:
    void openSession(const QString & /*kind*/, const SessionPaths & /*paths*/) override {}
    void showStatus(const QString & /*message*/, int /*milliseconds*/) override {}
};

/// Milliseconds, of which the median is told.
class Times {
public:
    void add(qint64 nanoseconds) { m_milliseconds.push_back(double(nanoseconds) / 1e6); }
    [[nodiscard]] double median()
    {
        std::sort(m_milliseconds.begin(), m_milliseconds.end());
        return m_milliseconds[m_milliseconds.size() / 2];
    }

private:
    std::vector<double> m_milliseconds;
};

/// Lines of forty letters, of which every hundredth differs between `variant` and another.
QByteArray makeText(int lines, char variant)
{
    QByteArray text;
    text.reserve(qsizetype(lines) * 45);
    for (int line = 0; line < lines; ++line) {
        text += "line " + QByteArray::number(line).rightJustified(8, '0') + " holds some words and";
        text += line % 100 == 50 ? QByteArray(" more ") + variant : QByteArray(" nothing");
        text += '\n';
    }
    return text;
}

QString write(const QTemporaryDir &folder, const char *name, const QByteArray &bytes)
{
    QFile file(folder.filePath(QLatin1String(name)));
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("cannot write");
    return file.fileName();
}

/// Bytes of this process that are in memory, 0 where that is not known.
double memoryInUse()
{
#ifdef Q_OS_LINUX
    QFile file(QStringLiteral("/proc/self/statm"));
    if (file.open(QIODevice::ReadOnly))
        return file.readAll().split(' ').value(1).toDouble() * double(::sysconf(_SC_PAGESIZE));
#endif
    return 0;
}

void press(QWidget &widget, Qt::Key key, const QString &text = {})
{
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&widget, &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, text);
    QCoreApplication::sendEvent(&widget, &up);
}

struct Costs {
    double delivery = 0; ///< milliseconds from the rows' arrival to both panes painted
    double frame = 0;    ///< of a step of the caret by one page
    double character = 0;
    double replacing = 0; ///< the longest turn of the event loop while all matches are replaced and compared again
    double memory = 0;    ///< times the two files
};

void paint(DiffView &view)
{
    QCoreApplication::processEvents(); // layouts and what else was put off
    view.pane(Side::Left).repaint();
    view.pane(Side::Right).repaint();
}

double measureDelivery(const QString &left, const QString &right)
{
    TextCompareInput input;
    input.left.path = left;
    input.right.path = right;
    Progress silent;
    const TextCompareResult result = runTextCompare(input, {}, silent);
    NoWindow host;
    TextCompareWidget session(host);
    session.resize(1200, 800);
    session.show();
    paint(session.view());
    Times times;
    for (int round = 0; round < 5; ++round) {
        QElapsedTimer timer;
        timer.start();
        // The number of the latest run: none has been started.
        session.onTextCompareFinished(0, result.document, {}, {}, {}, false, result.left, result.right);
        paint(session.view());
        times.add(timer.nsecsElapsed());
    }
    return times.median();
}

/// A match in each line is replaced.
double measureReplacing(TextCompareWidget &session)
{
    session.findChild<QAction *>(QStringLiteral("replaceAction"))->trigger();
    session.findChild<QLineEdit *>(QStringLiteral("findText"))->setText(QStringLiteral("words"));
    session.findChild<QLineEdit *>(QStringLiteral("replaceText"))->setText(QStringLiteral("phrases"));
    auto *button = session.findChild<QPushButton *>(QStringLiteral("replaceAll"));
    const auto *status = session.findChild<QLabel *>(QStringLiteral("statusLabel"));
    while (session.view().scene().search().isSearching() || !button->isEnabled())
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    double longest = 0;
    const auto turnUntil = [&longest](const std::function<bool()> &done) {
        while (!done()) {
            QElapsedTimer timer;
            timer.start();
            QCoreApplication::processEvents();
            longest = std::max(longest, double(timer.nsecsElapsed()) / 1e6);
        }
    };
    button->click();
    turnUntil([status] { return status->text().startsWith(QStringLiteral("Replaced")); });
    turnUntil([status] { return status->text().contains(QStringLiteral("Compare done")); });
    session.view().scene().search().setQuery({});
    return longest;
}

Costs measure(int lines)
{
    const QTemporaryDir folder;
    Costs costs;
    double bytes = 0;
    QString left;
    QString right;
    {
        const QByteArray leftText = makeText(lines, 'l');
        left = write(folder, "left", leftText);
        right = write(folder, "right", makeText(lines, 'r'));
        bytes = 2 * double(leftText.size());
    }
    const double before = memoryInUse();
    {
        NoWindow host;
        TextCompareWidget session(host);
        session.resize(1200, 800);
        session.show();
        session.setPaths({left, right, {}});
        session.start();
        while (session.isComparing())
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
        paint(session.view());
        costs.memory = (memoryInUse() - before) / bytes;

        DiffView &view = session.view();
        TextPane &pane = view.pane(Side::Left);
        Times steps;
        for (int frame = 0; frame < frames; ++frame) {
            // Somewhere else each time, so that nothing is at hand from before.
            view.scene().goToLine(Side::Left, qint32((qint64(frame) * lines) / frames + 1));
            paint(view);
            QElapsedTimer timer;
            timer.start();
            press(pane, Qt::Key_PageDown);
            paint(view);
            steps.add(timer.nsecsElapsed());
        }
        costs.frame = steps.median();

        session.setEditingEnabled(true);
        Times characters;
        for (int typed = 0; typed < frames; ++typed) {
            if (typed % 20 == 0)
                view.scene().goToLine(Side::Left, qint32((qint64(typed) * lines) / frames + 1));
            paint(view);
            QElapsedTimer timer;
            timer.start();
            press(pane, Qt::Key_X, QStringLiteral("x"));
            paint(view);
            characters.add(timer.nsecsElapsed());
        }
        costs.character = characters.median();
        costs.replacing = measureReplacing(session);
    }
    costs.delivery = measureDelivery(left, right);
    return costs;
}

/// Prints a line of the table; false when the bound is passed.
bool report(const char *what, double few, double many, double most)
{
    const double times = many / few;
    std::printf("%-28s %10.2f ms %10.2f ms %6.2f x (at most %g)\n", what, few, many, times, most);
    return times <= most;
}

} // namespace

int main(int argc, char *argv[])
{
    orderEndOfThreads();
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    // Nothing of the person who measures is read or written.
    const QTemporaryDir home;
    for (const char *variable : {"HOME", "XDG_CONFIG_HOME", "XDG_DATA_HOME"})
        qputenv(variable, home.path().toLocal8Bit());
    const QApplication application(argc, argv);

    const Costs many = measure(manyLines); // first, while the process holds nothing else
    const Costs few = measure(fewLines);
    std::printf("%-28s %10d    %10d    lines\n", "", fewLines, manyLines);
    bool ok = report("rows delivered and painted", few.delivery, many.delivery, mostForDelivery);
    ok = report("one page down", few.frame, many.frame, mostForAFrame) && ok;
    ok = report("one character typed", few.character, many.character, mostForACharacter) && ok;
    std::printf("%-28s %10.2f ms %10.2f ms\n", "longest wait while replacing", few.replacing, many.replacing);
    std::printf("%-28s %10.2f x the two files (at most %g)\n", "memory of the open session", many.memory, mostMemory);
    return ok && many.memory <= mostMemory ? 0 : 1;
}
