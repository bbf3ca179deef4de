#include "session/frame/paths_bar.h"

#include "session/dialogs.h"
#include "session/frame/path_edit.h"

#include <QAction>
#include <QGridLayout>
#include <QLabel>
#include <QToolButton>

#include <algorithm>

namespace velmora {

PathsBar::PathsBar(const QList<Field> &fields, QWidget *parent) : QWidget(parent), m_grid(new QGridLayout(this))
{
    m_grid->setContentsMargins(0, 0, 0, 0);
    m_grid->setVerticalSpacing(8);
    m_grid->setColumnStretch(1, 1);
    for (const Field &field : fields)
        addField(field);
    if (!m_rows.isEmpty())
        setFocusProxy(m_rows.first().edit);
}

void PathsBar::addField(const Field &field)
{
    auto *edit = new PathEdit(field.placeholder, field.browseTitle, this, field.line);
    auto *label = new QLabel(field.label, this);
    label->setBuddy(&edit->lineEdit());
    const int row = int(m_rows.size()) + 1;
    m_grid->addWidget(label, row, 0);
    m_grid->addWidget(edit, row, 1);
    m_rows.append({field.member, edit, 2});
    connect(edit, &PathEdit::submitted, this, &PathsBar::submitted);
    connect(edit, &PathEdit::browseRequested, this, [this, edit, field] {
        const auto take = [this, edit](const QString &path) {
            edit->setPath(path);
            Q_EMIT submitted();
        };
        if (field.picks == Field::Picks::Folder)
            Dialogs::instance().openFolder(this, field.browseTitle, edit->path(), take);
        else
            Dialogs::instance().openFile(this, field.browseTitle, edit->path(), {}, take);
    });
}

void PathsBar::addBehind(int field, QAction *action, Qt::ToolButtonStyle style)
{
    auto *button = new QToolButton(this);
    button->setDefaultAction(action);
    button->setToolButtonStyle(style);
    button->setIconSize(QSize(20, 20));
    button->setFocusPolicy(Qt::TabFocus);
    button->setObjectName(action->objectName() + QStringLiteral("Button"));
    button->setAccessibleName(action->toolTip());
    m_grid->addWidget(button, field + 1, m_rows[field].columns++);
}

int PathsBar::fieldAt(QPoint position) const
{
    const auto at = std::find_if(m_rows.cbegin(), m_rows.cend(), [&](const Row &row) {
        return position.y() >= row.edit->y() && position.y() < row.edit->y() + row.edit->height();
    });
    return at == m_rows.cend() ? -1 : int(at - m_rows.cbegin());
}

SessionPaths PathsBar::paths() const
{
    SessionPaths paths;
    for (const Row &row : m_rows)
        paths.*row.member = row.edit->path();
    return paths;
}

bool PathsBar::isComplete() const
{
    return std::none_of(m_rows.begin(), m_rows.end(), [](const Row &row) { return row.edit->path().isEmpty(); });
}

void PathsBar::setPaths(const SessionPaths &paths)
{
    for (const Row &row : m_rows)
        row.edit->setPath(paths.*row.member);
}

void PathsBar::take(const QStringList &dropped, QPoint position)
{
    if (dropped.size() == 1) {
        edit(std::max(0, fieldAt(position))).setPath(dropped.first());
        return;
    }
    for (qsizetype i = 0; i < std::min(dropped.size(), m_rows.size()); ++i)
        m_rows.at(i).edit->setPath(dropped.at(i));
}

void PathsBar::refreshTheme()
{
    for (const Row &row : m_rows)
        row.edit->refreshTheme();
}

} // namespace velmora
