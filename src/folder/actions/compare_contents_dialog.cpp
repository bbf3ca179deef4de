#include "folder/actions/compare_contents_dialog.h"

#include "core/settings_store.h"
#include "folder/actions/action_words.h"
#include "folder/engine/folder_engine.h"
#include "session/translate.h"

#include <QButtonGroup>
#include <QCheckBox>
#include <QGroupBox>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <limits>

namespace velmora {

namespace {

constexpr int usualWidth = 420;
const QString showResultsKey = QStringLiteral("FolderCompare/showContentResults");

/// What lies in the selection, of pairs on the left. What is selected together with a folder that it lies in counts
/// once.
FolderTotals totalsOf(const SourcePair &sources, const QList<FolderDiffItem> &selection, const CancelFlag &cancel,
                      Progress &progress)
{
    FolderTotals totals;
    QString counted; // the last selected folder, with "/"
    for (const FolderDiffItem &item : selection) {
        if (cancel.isCancelled())
            break;
        if (!counted.isEmpty() && item.name.startsWith(counted))
            continue;
        const Side side = item.leftPath.isEmpty() ? Side::Right : Side::Left;
        if (!item.isDir) {
            ++totals.files;
            totals.bytes += quint64(sizeOn(item, side));
            continue;
        }
        counted = item.name + u'/';
        ++totals.folders;
        const qint64 before = qint64(totals.files) + totals.folders;
        Progress whole([&progress, before](const ProgressState &state) {
            progress.report(state.phase, before + state.done, 0, state.item);
        });
        const FolderTotals within = countFolderContents({sources[side], pathOn(item, side)}, cancel, {&whole, nullptr});
        totals.files += within.files;
        totals.folders += within.folders;
        totals.bytes += within.bytes;
    }
    return totals;
}

} // namespace

CompareContentsDialog::CompareContentsDialog(const SourcePair &sources, const QList<FolderDiffItem> &selection,
                                             CompareMethod method, QWidget *parent)
    : QDialog(parent),
      m_totals(new QLabel),
      m_methods(new QButtonGroup(this)),
      m_results(new QCheckBox(Velmora::tr("Show results dialog (&D)")))
{
    setWindowTitle(Velmora::tr("Compare contents"));
    setModal(true);
    m_totals->setObjectName(QStringLiteral("contentsTotals"));
    m_results->setObjectName(QStringLiteral("contentsShowResults"));
    m_results->setChecked(SessionSettings().value(showResultsKey, true).toBool());

    auto *start = new QPushButton(Velmora::tr("Start (&S)"));
    start->setObjectName(QStringLiteral("contentsStart"));
    start->setDefault(true);
    auto *cancel = new QPushButton(Velmora::tr("Cancel"));
    cancel->setObjectName(QStringLiteral("contentsCancel"));
    connect(start, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    auto *selected = new QHBoxLayout;
    selected->addWidget(new QLabel(Velmora::tr("Selection:")));
    selected->addWidget(m_totals, 1);
    auto *buttons = new QHBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(start);
    buttons->addWidget(cancel);
    auto *whole = new QVBoxLayout(this);
    whole->setSpacing(10);
    whole->addWidget(new QLabel(Velmora::tr("Compare contents of the selected files and folders.")));
    whole->addLayout(selected);
    whole->addWidget(makeMethods(method));
    whole->addWidget(m_results);
    whole->addStretch(1);
    whole->addLayout(buttons);
    count(sources, selection);
    resize(usualWidth, sizeHint().height());
}

CompareMethod CompareContentsDialog::method() const
{
    return CompareMethod(m_methods->checkedId());
}

bool CompareContentsDialog::showsResults() const
{
    return m_results->isChecked();
}

void CompareContentsDialog::done(int result)
{
    m_runner.abandon();
    if (result == Accepted)
        SessionSettings().setValue(showResultsKey, showsResults());
    QDialog::done(result);
}

QGroupBox *CompareContentsDialog::makeMethods(CompareMethod chosen)
{
    auto *group = new QGroupBox(Velmora::tr("Operation:"));
    auto *column = new QVBoxLayout(group);
    const auto add = [this, column, chosen](CompareMethod method, const QString &text, const QString &name) {
        auto *button = new QRadioButton(text);
        button->setObjectName(name);
        button->setChecked(method == chosen);
        m_methods->addButton(button, int(method));
        column->addWidget(button);
    };
    add(CompareMethod::Binary, Velmora::tr("Binary compare (&N)"), QStringLiteral("contentsBinary"));
    add(CompareMethod::Crc, Velmora::tr("CRC compare"), QStringLiteral("contentsCrc"));
    add(CompareMethod::Rules, Velmora::tr("Rules-based compare (&U)"), QStringLiteral("contentsRules"));
    return group;
}

void CompareContentsDialog::count(const SourcePair &sources, const QList<FolderDiffItem> &selection)
{
    m_totals->setText(Velmora::tr("Counting..."));
    m_runner.start([sources, selection](const CancelFlag &cancel,
                                        Progress &progress) { return totalsOf(sources, selection, cancel, progress); },
                   [this](RunOutcome<FolderTotals> &&outcome) {
                       if (outcome.end == RunEnd::Done)
                           showTotals(*outcome.value);
                       else
                           m_totals->setText(Velmora::tr("not counted"));
                   },
                   [this](const ProgressState &state) {
                       m_totals->setText(Velmora::tr("Counting... %1").arg(QLocale().toString(state.done)));
                   });
}

void CompareContentsDialog::showTotals(const FolderTotals &totals)
{
    const QLocale locale;
    constexpr quint64 most = quint64(std::numeric_limits<qint64>::max());
    m_totals->setText(Velmora::tr("%1 files, %2 folders, %3")
                          .arg(locale.toString(totals.files), locale.toString(totals.folders),
                               sizeText(qint64(qMin(totals.bytes, most)))));
}

} // namespace velmora
