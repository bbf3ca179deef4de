#include "merge/change_list.h"

#include "merge/view/merge_words.h"
#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QCheckBox>
#include <QLineEdit>

#include <utility>

namespace velmora {

namespace {

// Beyond this, making the rows anew with each key would be felt.
constexpr qsizetype rowsAtOnce = 2000;

QString shortKind(const MergePart &part)
{
    switch (part.kind) {
    case ChunkKind::Unchanged:
        return Velmora::tr("Edited");
    case ChunkKind::Left:
        return Velmora::tr("Left");
    case ChunkKind::Right:
        return Velmora::tr("Right");
    case ChunkKind::Both:
        return Velmora::tr("Both");
    case ChunkKind::Conflict:
        return Velmora::tr("Conflict");
    }
    return {};
}

/// The lines of a part in one of its texts, as a person counts them.
QString lineNumbers(const LineRange &lines)
{
    if (lines.count == 0)
        return {};
    if (lines.count == 1)
        return QString::number(lines.first + 1);
    return Velmora::tr("%1-%2").arg(lines.first + 1).arg(lines.end());
}

/// The parts of a merge that are worth a row.
class ChangeRows final : public RowSource {
public:
    enum ChangeColumn { Kind, Lines, Choice, Decider, Text };

    explicit ChangeRows(std::shared_ptr<const MergeDocument> merge = {})
        : RowSource(Velmora::tr("Lines")), m_merge(std::move(merge))
    {
        const std::size_t count = m_merge ? m_merge->parts().size() : 0;
        for (std::size_t part = 0; part < count; ++part) {
            if (!m_merge->parts()[part].isPlain())
                m_parts.push_back(qsizetype(part));
        }
    }

    [[nodiscard]] qsizetype count() const override { return qsizetype(m_parts.size()); }

    [[nodiscard]] KeyedRow row(qsizetype number) const override
    {
        const MergePart &part = at(number);
        const bool needsLook = part.isOpen() || !warningText(part).isEmpty();
        KeyedRow row;
        row.key = QString::number(m_parts[std::size_t(number)]);
        row.status = needsLook ? PairStatus::Changed : PairStatus::Same;
        row.note = warningText(part);
        return row;
    }

    [[nodiscard]] QStringList headings() const override
    {
        return {Velmora::tr("Change"), Velmora::tr("Lines"), Velmora::tr("Decision"), Velmora::tr("Decided"),
                Velmora::tr("Text")};
    }
    [[nodiscard]] std::optional<Side> side(int /*column*/) const override { return std::nullopt; }

    [[nodiscard]] QString text(qsizetype number, int column) const override
    {
        const MergePart &part = at(number);
        switch (column) {
        case Kind:
            return warningText(part).isEmpty() ? shortKind(part) : Velmora::tr("%1 (look)").arg(shortKind(part));
        case Lines:
            return lineNumbers(shownLines(part).second);
        case Choice:
            return choiceText(part);
        case Decider:
            return deciderText(part);
        default:
            return firstText(part);
        }
    }

    [[nodiscard]] bool isBefore(qsizetype one, qsizetype other, int column) const override
    {
        if (column == Lines)
            return m_parts[std::size_t(one)] < m_parts[std::size_t(other)];
        return RowSource::isBefore(one, other, column);
    }

private:
    [[nodiscard]] const MergePart &at(qsizetype number) const
    {
        return m_merge->parts()[std::size_t(m_parts[std::size_t(number)])];
    }
    /// The lines that stand for a part: those of the first text that has any, a version before the base.
    [[nodiscard]] static std::pair<MergeSource, LineRange> shownLines(const MergePart &part)
    {
        const MergeSource first = part.kind == ChunkKind::Right ? MergeSource::Right : MergeSource::Left;
        for (const MergeSource source : {first, MergeSource::Right, MergeSource::Base}) {
            if (part.of(source).count > 0)
                return {source, part.of(source)};
        }
        return {MergeSource::Base, part.of(MergeSource::Base)};
    }
    [[nodiscard]] QString firstText(const MergePart &part) const
    {
        const auto [source, lines] = shownLines(part);
        return lines.count > 0 ? m_merge->merged().text(source).text(lines.first).trimmed() : QString();
    }

    std::shared_ptr<const MergeDocument> m_merge;
    std::vector<qsizetype> m_parts;
};

} // namespace

ChangeList::ChangeList(QWidget *parent)
    : MergeList(std::make_unique<ChangeRows>(), Velmora::tr("All changes of the merge"), parent),
      m_filter(new QLineEdit(this)),
      m_openOnly(new QCheckBox(Velmora::tr("Open only"), this))
{
    constexpr int pause = 150;
    m_pause.setInterval(pause);
    m_pause.setSingleShot(true);
    connect(&m_pause, &QTimer::timeout, this, [this] {
        if (m_shown != (m_merge ? m_merge->sharedParts() : nullptr))
            showMerge();
        showCurrentRow();
    });
    view().setObjectName(QStringLiteral("changeRows"));
    m_filter->setObjectName(QStringLiteral("changeFilter"));
    m_filter->setPlaceholderText(Velmora::tr("Words in the changes"));
    m_filter->setToolTip(Velmora::tr("Shows the changes that hold all of these words"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setAcceptDrops(false);
    m_openOnly->setObjectName(QStringLiteral("openOnly"));
    m_openOnly->setToolTip(Velmora::tr("Shows only open conflicts, and what was settled but is worth a look"));
    head().setSpacing(8);
    head().addWidget(m_filter, 1);
    head().addWidget(m_openOnly);
    connect(m_filter, &QLineEdit::textChanged, &model(), &ListModel::setFilter);
    connect(m_openOnly, &QCheckBox::toggled, &model(),
            [this](bool on) { model().setView(on ? RowsView::Differences : RowsView::All); });
}

void ChangeList::setMerge(std::shared_ptr<const MergeDocument> merge)
{
    const bool isSame = m_merge && merge && m_merge->sharedParts() == merge->sharedParts();
    m_merge = std::move(merge);
    if (isSame)
        return;
    if (rows().source().count() > rowsAtOnce)
        m_pause.start();
    else
        showMerge();
}

void ChangeList::showMerge()
{
    const auto following = follow();
    m_shown = m_merge ? m_merge->sharedParts() : nullptr;
    model().setSource(std::make_unique<ChangeRows>(m_merge));
    view().setNotice(rows().source().count() == 0 ? Velmora::tr("No version has changed anything.")
                                                  : Velmora::tr("No change holds these words, or none is open."));
}

void ChangeList::showCurrent(qsizetype part)
{
    if (part == std::exchange(m_current, part) && !m_pause.isActive())
        return;
    if (rows().source().count() > rowsAtOnce)
        m_pause.start();
    else
        showCurrentRow();
}

void ChangeList::showCurrentRow()
{
    const auto following = follow();
    view().goToRow(rows().find(QString::number(m_current)));
}

void ChangeList::tellChosen(int row)
{
    Q_EMIT partChosen(rows().rowAt(row).key.toLongLong());
}

} // namespace velmora
