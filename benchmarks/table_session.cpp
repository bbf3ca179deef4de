// How long the event loop stands still in a table session with a million rows, measured offscreen in one process.
//
//   benchmark_table_session       prints a table; the exit status is 1 when a bound is passed

#include "filetypes/table/table_compare_widget.h"
#include "platform/thread_end.h"
#include "session/session_host.h"
#include "session/session_record.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QScrollBar>
#include <QTableView>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <functional>

using namespace velmora;

namespace {

constexpr int rows = 1'000'000;
constexpr double longestStall = 50; // milliseconds

class NoWindow final : public SessionHost {
public:
    void openSession(const QString & /*kind*/, const SessionPaths & /*paths*/) override {}
    void showStatus(const QString & /*message*/, int /*milliseconds*/) override {}
};

/// An application that remembers how long it was busy with one event.
class TimedApplication final : public QApplication {
public:
    using QApplication::QApplication;

    bool notify(QObject *receiver, QEvent *event) override
    {
        if (m_depth++ == 0)
            m_timer.start();
        const bool handled = QApplication::notify(receiver, event);
        if (--m_depth == 0)
            m_longest = std::max(m_longest, m_timer.nsecsElapsed());
        return handled;
    }
    double takeLongest() { return double(std::exchange(m_longest, 0)) / 1e6; }

private:
    int m_depth = 0;
    QElapsedTimer m_timer;
    qint64 m_longest = 0;
};

QString makeTable(const QTemporaryDir &folder, const char *name, char variant)
{
    QFile file(folder.filePath(QLatin1String(name)));
    if (!file.open(QIODevice::WriteOnly))
        qFatal("cannot write %s", name);
    QByteArray text = "id,name,amount,city\n";
    for (int row = 0; row < rows; ++row) {
        text += QByteArray::number(row).rightJustified(7, '0') + ",n" + QByteArray::number(row % 977) + ',' +
                QByteArray::number(row % 4099) + ",c" + (row % 100 == 50 ? variant : 'x') + '\n';
    }
    file.write(text);
    return file.fileName();
}

void settle()
{
    for (int round = 0; round < 5; ++round)
        QApplication::processEvents();
}

/// Runs `act` once more than its best is taken from, and tells the longest time for which nothing else could happen.
bool measure(TimedApplication &application, const char *what, const std::function<void()> &act)
{
    double best = 1e9;
    for (int round = 0; round < 5; ++round) {
        settle();
        static_cast<void>(application.takeLongest());
        QElapsedTimer timer;
        timer.start();
        act();
        const double own = double(timer.nsecsElapsed()) / 1e6;
        settle();
        best = std::min(best, std::max(own, application.takeLongest()));
    }
    std::printf("| %s | %.1f ms |\n", what, best);
    return best <= longestStall;
}

/// Compares, and measures what a person does then; false when anything took longer than it may.
bool measureAll(TimedApplication &application, TableCompareWidget &session)
{
    auto *grid = session.findChild<QTableView *>(QStringLiteral("leftGrid"));
    const auto trigger = [&session](const char *action) {
        session.findChild<QAction *>(QLatin1String(action))->trigger();
    };
    double delivery = 1e9;
    for (int round = 0; round < 3; ++round) {
        settle();
        static_cast<void>(application.takeLongest());
        session.start();
        while (session.isReading())
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
        settle();
        delivery = std::min(delivery, application.takeLongest());
    }
    std::printf("| result delivered and painted | %.1f ms |\n", delivery);
    bool held = delivery <= longestStall;
    held &= measure(application, "only differences, and all again", [&] {
        trigger("showDifferencesAction");
        settle();
        trigger("showAllAction");
    });
    held &= measure(application, "next difference", [&] { trigger("nextAction"); });
    held &= measure(application, "to the end and back", [&] {
        grid->verticalScrollBar()->setValue(rows);
        settle();
        grid->verticalScrollBar()->setValue(0);
    });
    held &= measure(application, "all rows selected", [&] { grid->selectAll(); });
    return held;
}

/// A key, rules for two columns, one hidden and one frozen, and the current row as a card.
QJsonObject choices()
{
    const QJsonObject city{{QStringLiteral("name"), QStringLiteral("city")}, {QStringLiteral("ignoreCase"), true}};
    const QJsonObject amount{{QStringLiteral("name"), QStringLiteral("amount")},
                             {QStringLiteral("meaning"), QStringLiteral("number")},
                             {QStringLiteral("tolerance"), 0.5}};
    const QJsonObject name{{QStringLiteral("name"), QStringLiteral("name")}, {QStringLiteral("hidden"), true}};
    const QJsonObject id{{QStringLiteral("name"), QStringLiteral("id")}, {QStringLiteral("frozen"), true}};
    return {{QStringLiteral("key"), 0},
            {QStringLiteral("keyName"), QStringLiteral("id")},
            {QStringLiteral("card"), 1},
            {QStringLiteral("columns"), QJsonArray{city, amount, name, id}}};
}

} // namespace

int main(int argc, char *argv[])
{
    orderEndOfThreads();
    qputenv("QT_QPA_PLATFORM", "offscreen");
    TimedApplication application(argc, argv);
    const QTemporaryDir folder;
    NoWindow host;
    TableCompareWidget session(host);
    session.resize(1400, 900);
    session.show();
    session.setPaths({makeTable(folder, "left.csv", 'a'), makeTable(folder, "right.csv", 'b'), {}});
    std::printf("| step, a million rows | longest stall |\n|---|---|\n");
    bool held = measureAll(application, session);
    session.setOptions(choices());
    std::printf("| by key, with rules, hidden and frozen columns and a card: | |\n");
    held &= measureAll(application, session);
    return held ? 0 : 1;
}
