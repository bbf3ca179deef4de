#include "folder/actions/manual_alignment_dialog.h"

#include "core/path_names.h"
#include "folder/actions/action_words.h"
#include "session/dialogs.h"
#include "session/translate.h"
#include "settings/dialogs/confirm_buttons.h"

#include <QFileInfo>
#include <QLabel>
#include <QListView>
#include <QSet>
#include <QStringListModel>
#include <QVBoxLayout>

#include <algorithm>
#include <vector>

namespace velmora {

namespace {

constexpr QSize usualSize(460, 340);

QStringView levelOf(const FolderDiffItem &item)
{
    return QStringView(item.name).left(item.name.lastIndexOf(u'/') + 1);
}

bool isOnOneSide(const FolderDiffItem &item)
{
    return item.leftPath.isEmpty() != item.rightPath.isEmpty();
}

bool areOpposite(const FolderDiffItem &one, const FolderDiffItem &other)
{
    return isOnOneSide(one) && isOnOneSide(other) && one.leftPath.isEmpty() != other.leftPath.isEmpty() &&
           levelOf(one) == levelOf(other);
}

QString ownName(const FolderDiffItem &item)
{
    return bareName(item.leftPath.isEmpty() ? item.rightPath : item.leftPath);
}

/// Neighbouring characters, without regard to case.
QSet<QString> pairsOf(const QString &name)
{
    const QString folded = name.toCaseFolded();
    QSet<QString> pairs;
    for (qsizetype i = 0; i + 1 < folded.size(); ++i)
        pairs.insert(folded.mid(i, 2));
    return pairs;
}

/// The share of pairs of characters that two names have in common (Dice's coefficient), 0 to 1.
double similarity(const QSet<QString> &one, const QSet<QString> &other)
{
    if (one.isEmpty() || other.isEmpty())
        return 0;
    const auto common =
        std::count_if(one.begin(), one.end(), [&other](const QString &pair) { return other.contains(pair); });
    return 2.0 * double(common) / double(one.size() + other.size());
}

/// The one of the two that is on the left, then the other.
void tellPair(const FolderDiffItem &one, const FolderDiffItem &other,
              const std::function<void(const QString &, const QString &)> &aligned)
{
    if (one.leftPath.isEmpty())
        aligned(ownName(other), ownName(one));
    else
        aligned(ownName(one), ownName(other));
}

} // namespace

QList<FolderDiffItem> alignmentCandidates(const FolderDiffItem &item, const QList<FolderDiffItem> &items)
{
    struct Candidate {
        const FolderDiffItem *item;
        bool otherSort;
        double likeness;
    };
    const QSet<QString> pairs = pairsOf(ownName(item));
    std::vector<Candidate> found;
    for (const FolderDiffItem &other : items) {
        if (areOpposite(item, other))
            found.push_back({&other, other.isDir != item.isDir, similarity(pairs, pairsOf(ownName(other)))});
    }
    std::stable_sort(found.begin(), found.end(), [](const Candidate &left, const Candidate &right) {
        return left.otherSort != right.otherSort ? right.otherSort : left.likeness > right.likeness;
    });
    QList<FolderDiffItem> candidates;
    for (const Candidate &candidate : found)
        candidates.append(*candidate.item);
    return candidates;
}

ManualAlignmentDialog::ManualAlignmentDialog(const QList<FolderDiffItem> &candidates, QWidget *parent)
    : QDialog(parent), m_list(new QListView)
{
    setWindowTitle(Velmora::tr("Manual alignment"));
    setModal(true);
    QStringList rows;
    for (const FolderDiffItem &item : candidates) {
        const QString size = entrySizeText(item.isDir, item.leftPath.isEmpty() ? item.rightSize : item.leftSize);
        rows.append(Velmora::tr("%1  (%2)").arg(ownName(item), size));
    }
    m_list->setObjectName(QStringLiteral("alignmentCandidates"));
    m_list->setModel(new QStringListModel(rows, m_list));
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->setUniformItemSizes(true);
    m_list->setTextElideMode(Qt::ElideMiddle);
    m_list->setCurrentIndex(m_list->model()->index(0, 0));
    connect(m_list, &QListView::doubleClicked, this, &QDialog::accept);

    auto *label = new QLabel(Velmora::tr("Choose the item on the other side to align with:"));
    label->setBuddy(m_list);
    auto *whole = new QVBoxLayout(this);
    whole->addWidget(label);
    whole->addWidget(m_list, 1);
    whole->addLayout(makeConfirmButtons(*this));
    resize(usualSize);
}

int ManualAlignmentDialog::chosen() const
{
    return m_list->currentIndex().row();
}

void askManualAlignment(QWidget &parent, const QList<FolderDiffItem> &selection, const QList<FolderDiffItem> &items,
                        std::function<void(const QString &, const QString &)> aligned)
{
    if (selection.size() == 2 && areOpposite(selection[0], selection[1])) {
        tellPair(selection[0], selection[1], aligned);
        return;
    }
    const QString title = Velmora::tr("Manual alignment");
    if (selection.size() != 1 || !isOnOneSide(selection.first())) {
        Dialogs::instance().tell(&parent, Dialogs::Tone::Information, title,
                                 Velmora::tr("Select a left-only or right-only item, then pair it with an item unique "
                                             "on the other side."));
        return;
    }
    const FolderDiffItem item = selection.first();
    const QList<FolderDiffItem> candidates = alignmentCandidates(item, items);
    if (candidates.isEmpty()) {
        Dialogs::instance().tell(&parent, Dialogs::Tone::Information, title,
                                 Velmora::tr("No unique items on the other side at this level to pair with."));
        return;
    }
    auto *dialog = new ManualAlignmentDialog(candidates, &parent);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(dialog, &QDialog::accepted, &parent, [dialog, item, candidates, aligned = std::move(aligned)] {
        tellPair(item, candidates[dialog->chosen()], aligned);
    });
    dialog->open();
}

} // namespace velmora
