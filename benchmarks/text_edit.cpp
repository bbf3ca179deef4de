// How long the event loop stands still while a large file is opened, typed into and saved in a text edit session.
//
//   benchmark_text_edit        prints a table; the exit status is 1 when a key takes longer than it may

#include "platform/thread_end.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_pane.h"
#include "session/session_host.h"
#include "session/session_record.h"
#include "text/edit/text_edit_widget.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonObject>
#include <QKeyEvent>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <vector>

using namespace velmora;

namespace {

constexpr qsizetype fileSize = 50'000'000;
constexpr double longestWait = 50; // milliseconds for one key
constexpr int rounds = 60;

class NoWindow final : public SessionHost {
public:
    void openSession(const QString & /*kind*/, const SessionPaths & /*paths*/) override {}
    void showStatus(const QString & /*message*/, int /*milliseconds*/) override {}
};

QByteArray makeLog()
{
    QByteArray text;
    text.reserve(fileSize + 100);
    for (int line = 0; text.size() < fileSize; ++line) {
        text += "2026-11-22 12:00:00 INFO [worker-" + QByteArray::number(line % 16) + "] request " +
                QByteArray::number(line) + " took 12 ms\n";
    }
    return text;
}

double timeOf(const std::function<void()> &work)
{
    QElapsedTimer timer;
    timer.start();
    work();
    return double(timer.nsecsElapsed()) / 1e6;
}

/// The longest turn of the event loop until `done`.
double longestTurn(const std::function<bool()> &done)
{
    double longest = 0;
    while (!done())
        longest = std::max(longest, timeOf([] { QCoreApplication::processEvents(); }));
    return longest;
}

struct KeyStroke {
    const char *name;
    Qt::Key key;
    QString text;
};

/// Presses the key in lines all over the text, each time until it is painted.
bool report(TextEditWidget &session, const KeyStroke &stroke)
{
    PaneView &view = session.view();
    std::vector<double> times;
    for (int round = 0; round < rounds; ++round) {
        const qint64 lines = view.scene().document()->source(0).count();
        if (round % 3 == 0)
            view.scene().goToLine(0, qint32(lines * round / rounds + 1));
        QCoreApplication::processEvents();
        view.pane(0).repaint();
        times.push_back(timeOf([&] {
            QKeyEvent down(QEvent::KeyPress, stroke.key, Qt::NoModifier, stroke.text);
            QCoreApplication::sendEvent(&view.pane(0), &down);
            QCoreApplication::processEvents();
            view.pane(0).repaint();
        }));
    }
    std::sort(times.begin(), times.end());
    std::printf("%-20s median %7.2f ms, longest %7.2f ms\n", stroke.name, times[times.size() / 2], times.back());
    return times.back() <= longestWait;
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

    const QString path = home.filePath(QStringLiteral("big.log"));
    {
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(makeLog()) < fileSize)
            qFatal("cannot write");
    }
    NoWindow host;
    TextEditWidget session(host);
    session.resize(1200, 800);
    session.show();
    session.setPaths({path, {}, {}});
    session.start();
    const double opening = longestTurn([&session] { return !session.isReading(); });
    std::printf("%-20s longest %7.2f ms\n", "opening", opening);
    bool ok = true;
    const KeyStroke strokes[] = {{"a letter", Qt::Key_X, QStringLiteral("x")},
                                 {"Return", Qt::Key_Return, QStringLiteral("\r")},
                                 {"Backspace", Qt::Key_Backspace, {}}};
    for (const KeyStroke &stroke : strokes)
        ok = report(session, stroke) && ok;
    session.onSave();
    const auto saved = [&session] { return !session.hasUnsavedChanges(); };
    std::printf("%-20s longest %7.2f ms\n", "saving", longestTurn(saved));
    session.setOptions({{QStringLiteral("savedLineEnds"), QStringLiteral("CRLF")}});
    double converting = timeOf([&session] { session.onSave(); });
    converting = std::max(converting, longestTurn(saved));
    std::printf("%-20s longest %7.2f ms\n", "other line ends", converting);
    return ok ? 0 : 1;
}
