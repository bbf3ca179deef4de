#include "merge/left_out_list.h"

#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>

#include <algorithm>
#include <utility>

namespace velmora {

class LeftOutList::Rows final : public RowSource {
public:
    enum LineColumn { Version, Number, Text };

    explicit Rows(std::shared_ptr<const MergeDocument> merge = {})
        : RowSource(Velmora::tr("Line")), m_merge(std::move(merge))
    {
        const std::size_t count = m_merge ? m_merge->parts().size() : 0;
        for (std::size_t part = 0; part < count; ++part) {
            for (const SourceLine &line : m_merge->parts()[part].leftOut)
                m_entries.push_back({qsizetype(part), line});
        }
    }

    [[nodiscard]] qsizetype count() const override { return qsizetype(m_entries.size()); }
    [[nodiscard]] const Entry &entry(qsizetype number) const { return m_entries[std::size_t(number)]; }

    [[nodiscard]] KeyedRow row(qsizetype number) const override
    {
        KeyedRow row;
        row.key = QString::number(number);
        row.status = entry(number).line.source == MergeSource::Left ? PairStatus::LeftOnly : PairStatus::RightOnly;
        return row;
    }

    [[nodiscard]] QStringList headings() const override
    {
        return {Velmora::tr("Version"), Velmora::tr("Line"), Velmora::tr("Text")};
    }
    [[nodiscard]] std::optional<Side> side(int /*column*/) const override { return std::nullopt; }

    [[nodiscard]] QString text(qsizetype number, int column) const override
    {
        const SourceLine &line = entry(number).line;
        switch (column) {
        case Version:
            return line.source == MergeSource::Left ? Velmora::tr("Left") : Velmora::tr("Right");
        case Number:
            return QString::number(line.line + 1);
        default:
            return m_merge->merged().text(line.source).text(line.line).trimmed();
        }
    }

    [[nodiscard]] bool isBefore(qsizetype one, qsizetype other, int column) const override
    {
        if (column == Number)
            return entry(one).line.line < entry(other).line.line;
        return RowSource::isBefore(one, other, column);
    }

private:
    std::shared_ptr<const MergeDocument> m_merge;
    std::vector<Entry> m_entries;
};

LeftOutList::LeftOutList(QWidget *parent)
    : MergeList(std::make_unique<Rows>(), Velmora::tr("Lines that the merge line by line left out"), parent),
      m_title(new QLabel(this)),
      m_putIn(new QPushButton(Velmora::tr("Put in"), this))
{
    view().setObjectName(QStringLiteral("leftOutRows"));
    m_title->setObjectName(QStringLiteral("leftOutTitle"));
    m_putIn->setObjectName(QStringLiteral("putInButton"));
    m_putIn->setToolTip(
        Velmora::tr("Put the selected lines into the result, where they stand in their version (Enter)"));
    m_putIn->setAutoDefault(false);
    head().addWidget(m_title, 1);
    head().addWidget(m_putIn);
    hide();
    connect(m_putIn, &QPushButton::clicked, this, &LeftOutList::wantSelected);
    connect(&view(), &QTreeView::doubleClicked, this, &LeftOutList::wantSelected);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Insert}) {
        auto *shortcut = new QShortcut(key, &view(), this, &LeftOutList::wantSelected);
        shortcut->setContext(Qt::WidgetShortcut);
    }
}

void LeftOutList::setMerge(std::shared_ptr<const MergeDocument> merge)
{
    m_merge = std::move(merge);
    const MergeDocument::Parts parts = m_merge ? m_merge->sharedParts() : nullptr;
    if (std::exchange(m_shown, parts) == parts)
        return;
    auto rows = std::make_unique<Rows>(m_merge);
    const qsizetype count = rows->count();
    if (count == 0 && isHidden())
        return;
    const auto following = follow();
    const int current = view().currentIndex().row();
    model().setSource(std::move(rows));
    m_title->setText(Velmora::tr("Lines left out: %1").arg(count));
    if (count > 0)
        view().goToRow(std::clamp(current, 0, int(count) - 1));
    setVisible(count > 0);
}

LeftOutList::Entry LeftOutList::entryAt(int row) const
{
    const auto &source = static_cast<const Rows &>(rows().source());
    return source.entry(rows().rowAt(row).key.toLongLong());
}

void LeftOutList::tellChosen(int row)
{
    const Entry entry = entryAt(row);
    Q_EMIT lineChosen(entry.part, entry.line);
}

void LeftOutList::wantSelected()
{
    std::vector<Entry> wanted;
    for (const int row : view().selectedRows())
        wanted.push_back(entryAt(row));
    for (const Entry &entry : wanted)
        Q_EMIT lineWanted(entry.part, entry.line);
}

} // namespace velmora
