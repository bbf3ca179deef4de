#include "folder/compare/contents_run.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "folder/actions/compare_contents_dialog.h"
#include "folder/actions/contents_results_dialog.h"
#include "folder/compare/folder_comparison.h"
#include "session/translate.h"

#include <QLocale>
#include <QTime>

#include <algorithm>

namespace velmora {

namespace {

QString outcomeText(const ContentsResults &results)
{
    const QLocale locale;
    QString text = Velmora::tr("Contents compared: %1 same, %2 different")
                       .arg(locale.toString(results.same), locale.toString(results.different));
    if (!results.unreadable.isEmpty())
        text = Velmora::tr("%1; %2 could not be read").arg(text, locale.toString(results.unreadable.size()));
    if (results.untold > 0)
        text = Velmora::tr("%1; %2 not compared: the snapshot has no checksums of them")
                   .arg(text, locale.toString(results.untold));
    return text;
}

} // namespace

QString methodWord(CompareMethod method)
{
    switch (method) {
    case CompareMethod::Crc:
        return Velmora::tr("CRC");
    case CompareMethod::Binary:
        return Velmora::tr("binary");
    case CompareMethod::Rules:
        break;
    }
    return Velmora::tr("rules");
}

ContentsRun::ContentsRun(FolderComparison &comparison, QWidget &window)
    : QObject(&window), m_comparison(comparison), m_window(window)
{
    connect(&comparison, &FolderComparison::contentsCompared, this, &ContentsRun::take);
    connect(&comparison, &FolderComparison::recompared, this, [this] {
        if (!m_waiting.isEmpty())
            start(std::exchange(m_waiting, {}), m_method);
    });
}

void ContentsRun::ask(const QList<qint32> &nodes)
{
    const FolderTree &tree = m_comparison.tree();
    if (tree.isEmpty()) {
        Q_EMIT statusChanged(Velmora::tr("Select two folders to compare"));
        return;
    }
    QList<FolderDiffItem> items;
    for (const qint32 node : nodes)
        items.append(tree.item(node));
    for (qint32 node = 0; nodes.isEmpty() && node < tree.size(); node = tree.node(node).end)
        items.append(tree.item(node));
    QStringList names;
    for (const FolderDiffItem &item : std::as_const(items))
        names.append(item.name);
    auto *dialog = new CompareContentsDialog(sourcesOf(m_comparison.spec().roots), items, m_method, &m_window);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    connect(dialog, &QDialog::accepted, this, [this, dialog, names] {
        m_method = dialog->method();
        m_showsResults = dialog->showsResults();
        start(names, m_method);
    });
    dialog->open();
}

void ContentsRun::start(const QStringList &names, CompareMethod method)
{
    const FolderTree &tree = m_comparison.tree();
    QList<qint32> nodes;
    QStringList unread;
    for (const QString &name : names) {
        if (const qint32 node = tree.find(name); node >= 0)
            nodes.append(node);
    }
    std::sort(nodes.begin(), nodes.end());
    m_unmatched = 0;
    qint32 reached = 0;
    for (const qint32 node : std::as_const(nodes)) {
        for (qint32 i = std::max(node, reached); i < tree.node(node).end; ++i) {
            if (tree.node(i).unloaded)
                unread.append(tree.item(i).name);
            else if (!tree.item(i).isDir && !isPair(tree.item(i)))
                ++m_unmatched;
        }
        reached = std::max(reached, tree.node(node).end);
    }
    Q_EMIT started(method);
    if (unread.isEmpty()) {
        m_comparison.compareContents(nodes, method);
        return;
    }
    m_waiting = names;
    m_comparison.recompare(unread);
}

void ContentsRun::readUnread()
{
    m_unmatched = 0;
    m_showsResults = false;
    Q_EMIT statusChanged(Velmora::tr("Reading files of the same size and time..."));
    Q_EMIT logLine(Velmora::tr("%1 read files of the same size and time: %2")
                       .arg(logTime(QTime::currentTime()), QLocale().toString(m_comparison.tree().counts().unread)));
    m_comparison.readUnread();
}

void ContentsRun::take(const ContentsResult &result, bool wasCancelled)
{
    ContentsResults shown;
    shown.cancelled = wasCancelled;
    shown.unmatched = m_unmatched;
    const SourcePair sources = sourcesOf(m_comparison.spec().roots);
    const bool haveContents = std::all_of(bothSides.begin(), bothSides.end(), [&sources](Side side) {
        return !sources[side] || sources[side]->contentAccess() == ContentAccess::Readable;
    });
    for (const FolderDiffItem &pair : result.pairs) {
        if (pair.status == FolderTree::unknownStatus) {
            shown.untold += wasCancelled || haveContents ? 0 : 1;
            continue;
        }
        if (pair.diffStatus() == FolderDiffStatus::Same) {
            ++shown.same;
        } else {
            ++shown.different;
            shown.differing.append(pair.name);
        }
    }
    for (const FolderProblem &problem : result.problems)
        shown.unreadable.append(nativePath(TreeFolder{sources[problem.side], problem.path}.shownPath()));
    if (wasCancelled) {
        Q_EMIT cancelled();
    } else {
        Q_EMIT statusChanged(outcomeText(shown));
    }
    if (m_showsResults) {
        auto *dialog = new ContentsResultsDialog(shown, &m_window);
        dialog->setAttribute(Qt::WA_DeleteOnClose);
        dialog->open();
    }
}

} // namespace velmora
