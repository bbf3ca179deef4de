#include "folder/git/git_commit_list.h"

#include "core/visible_name.h"
#include "session/list/tree_model.h"
#include "session/list/tree_view.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QDateTime>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QLocale>

namespace velmora {

/// One row for each commit, without levels.
class GitCommitList::Rows final : public FixedRowTree {
public:
    enum Column { Subject, OnSide, Author, Time, Name, ColumnCount };

    explicit Rows(std::vector<GitCommit> commits)
        : FixedRowTree(std::vector<quint16>(commits.size(), 0)), m_commits(std::move(commits))
    {}

    [[nodiscard]] const GitCommit &commit(qint32 node) const { return m_commits[std::size_t(node)]; }

    [[nodiscard]] QStringList headings() const override
    {
        return {Velmora::tr("Commit"), Velmora::tr("Side"), Velmora::tr("Author"), Velmora::tr("Time"),
                Velmora::tr("Id")};
    }
    [[nodiscard]] QString text(qint32 node, int column) const override
    {
        const GitCommit &one = commit(node);
        constexpr int shownLetters = 10;
        switch (column) {
        case Subject:
            return visibleName(one.subject);
        case OnSide:
            return one.isOnLeft ? Velmora::tr("Left") : Velmora::tr("Right");
        case Author:
            return visibleName(one.author);
        case Time:
            return QLocale().toString(QDateTime::fromMSecsSinceEpoch(one.timeMs), QLocale::ShortFormat);
        case Name:
            return QString::fromLatin1(one.name.first(std::min<qsizetype>(shownLetters, one.name.size())));
        default:
            return {};
        }
    }
    [[nodiscard]] QString hint(qint32 node, int /*column*/) const override
    {
        const GitCommit &one = commit(node);
        return QStringLiteral("%1\n%2, %3\n%4")
            .arg(visibleName(one.subject), visibleName(one.author), text(node, Time), QString::fromLatin1(one.name));
    }
    [[nodiscard]] RowPicture picture(qint32 /*node*/) const override { return RowPicture::None; }
    [[nodiscard]] bool isBefore(qint32 one, qint32 other, int column) const override
    {
        return column == Time ? commit(one).timeMs < commit(other).timeMs : FixedRowTree::isBefore(one, other, column);
    }
    [[nodiscard]] bool holds(qint32 node, const QString &word) const override
    {
        const GitCommit &one = commit(node);
        return one.subject.contains(word, Qt::CaseInsensitive) || one.author.contains(word, Qt::CaseInsensitive) ||
               QString::fromLatin1(one.name).startsWith(word, Qt::CaseInsensitive);
    }

private:
    std::vector<GitCommit> m_commits;
};

GitCommitList::GitCommitList(QWidget *parent)
    : QWidget(parent),
      m_title(new QLabel),
      m_filter(new QLineEdit),
      m_rows(new TreeModel(std::make_unique<Rows>(std::vector<GitCommit>()), this)),
      m_view(new TreeView(*m_rows, this))
{
    m_title->setObjectName(QStringLiteral("gitCommitsTitle"));
    m_filter->setObjectName(QStringLiteral("gitCommitFilter"));
    m_filter->setPlaceholderText(Velmora::tr("Find commits by words, author or id"));
    m_filter->setClearButtonEnabled(true);
    m_view->setObjectName(QStringLiteral("gitCommits"));
    m_view->setAccessibleName(Velmora::tr("Commits between the two sides"));
    m_view->setSelectionMode(QAbstractItemView::SingleSelection);
    QHeaderView &header = *m_view->horizontalHeader();
    const QFontMetrics metrics = m_view->fontMetrics();
    constexpr int room = 22;
    const QString widest[] = {{},
                              Velmora::tr("Right"),
                              QStringLiteral("Mmmmmmmm Mmmmm"),
                              QLocale().toString(QDateTime(QDate(2028, 12, 28), QTime(22, 58)), QLocale::ShortFormat),
                              QStringLiteral("0123456789")};
    for (int column = Rows::OnSide; column < Rows::ColumnCount; ++column)
        header.resizeSection(column, metrics.horizontalAdvance(widest[column]) + room);
    auto *head = new QHBoxLayout;
    head->addWidget(m_title, 1);
    head->addWidget(m_filter, 1);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 4, 0, 0);
    column->setSpacing(4);
    column->addLayout(head);
    column->addWidget(m_view, 1);
    connect(m_filter, &QLineEdit::textChanged, m_rows, &TreeModel::setFilter);
    connect(m_filter, &QLineEdit::returnPressed, m_view, qOverload<>(&QWidget::setFocus));
    connect(m_view, &QAbstractItemView::clicked, this, &GitCommitList::want);
    connect(m_view, &TreeView::openWanted, this, &GitCommitList::want);
    setNote({});
}

void GitCommitList::setCommits(const GitCommits &commits)
{
    const qint64 count = qint64(commits.commits.size());
    m_rows->setTree(std::make_unique<Rows>(commits.commits));
    const QString number = QLocale().toString(count);
    if (count == 0)
        m_title->setText(Velmora::tr("No commits between the two sides"));
    else if (count == 1)
        m_title->setText(Velmora::tr("1 commit between the two sides"));
    else
        m_title->setText(commits.areMore ? Velmora::tr("The latest %1 commits between the two sides").arg(number)
                                         : Velmora::tr("%1 commits between the two sides").arg(number));
    m_filter->setEnabled(count > 0);
}

void GitCommitList::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    // The subject has what the others leave.
    constexpr int leastForAuthor = 720;
    constexpr int leastForName = 480;
    m_view->setColumnHidden(Rows::Author, width() < leastForAuthor);
    m_view->setColumnHidden(Rows::Name, width() < leastForName);
}

void GitCommitList::setNote(const QString &text)
{
    m_rows->setTree(std::make_unique<Rows>(std::vector<GitCommit>()));
    m_title->setText(text);
    m_filter->setEnabled(false);
}

void GitCommitList::want(const QModelIndex &index)
{
    const qint32 node = m_rows->nodeAt(index.row());
    if (node >= 0)
        Q_EMIT wanted(static_cast<const Rows &>(m_rows->rowTree()).commit(node));
}

} // namespace velmora
