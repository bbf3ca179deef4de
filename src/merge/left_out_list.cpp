#include "merge/left_out_list.h"

#include "session/list/list_model.h"
#include "session/list/list_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScopedValueRollback>
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
    : QWidget(parent),
      m_rows(new ListModel(std::make_unique<Rows>(), this)),
      m_view(new ListView(*m_rows, this)),
      m_title(new QLabel(this)),
      m_putIn(new QPushButton(Velmora::tr("Put in"), this))
{
    m_view->setObjectName(QStringLiteral("leftOutRows"));
    m_view->setAccessibleName(Velmora::tr("Lines that the merge line by line left out"));
    m_view->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
    m_title->setObjectName(QStringLiteral("leftOutTitle"));
    m_putIn->setObjectName(QStringLiteral("putInButton"));
    m_putIn->setToolTip(
        Velmora::tr("Put the selected lines into the result, where they stand in their version (Enter)"));
    m_putIn->setAutoDefault(false);
    auto *head = new QHBoxLayout;
    head->setContentsMargins(6, 3, 6, 3);
    head->addWidget(m_title, 1);
    head->addWidget(m_putIn);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(head);
    column->addWidget(m_view, 1);
    setFocusProxy(m_view);
    hide();
    connect(m_putIn, &QPushButton::clicked, this, &LeftOutList::wantSelected);
    connect(m_view, &QTreeView::doubleClicked, this, &LeftOutList::wantSelected);
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Insert}) {
        auto *shortcut = new QShortcut(key, m_view, this, &LeftOutList::wantSelected);
        shortcut->setContext(Qt::WidgetShortcut);
    }
    connect(m_view, &QTreeView::clicked, this, &LeftOutList::tellChosen);
    connect(m_view, &ListView::currentRowChanged, this, &LeftOutList::tellChosen);
}

// The view tells of its rows as it goes, and children outlive members.
LeftOutList::~LeftOutList()
{
    m_view->disconnect(this);
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
    const QScopedValueRollback<bool> follows(m_follows, true);
    const int current = m_view->currentIndex().row();
    m_rows->setSource(std::move(rows));
    m_title->setText(Velmora::tr("Lines left out: %1").arg(count));
    if (count > 0)
        m_view->goToRow(std::clamp(current, 0, int(count) - 1));
    setVisible(count > 0);
}

LeftOutList::Entry LeftOutList::entryAt(int row) const
{
    const auto &rows = static_cast<const Rows &>(m_rows->source());
    return rows.entry(m_rows->rowAt(row).key.toLongLong());
}

void LeftOutList::tellChosen()
{
    const int row = m_view->currentIndex().row();
    if (m_follows || row < 0)
        return;
    const Entry entry = entryAt(row);
    Q_EMIT lineChosen(entry.part, entry.line);
}

void LeftOutList::wantSelected()
{
    std::vector<Entry> wanted;
    for (const int row : m_view->selectedRows())
        wanted.push_back(entryAt(row));
    for (const Entry &entry : wanted)
        Q_EMIT lineWanted(entry.part, entry.line);
}

void LeftOutList::refreshTheme()
{
    m_rows->refreshTheme();
    m_view->viewport()->update();
}

} // namespace velmora
