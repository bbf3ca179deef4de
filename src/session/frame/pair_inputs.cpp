#include "session/frame/pair_inputs.h"

#include "session/dialogs.h"
#include "session/frame/path_edit.h"

#include <QBoxLayout>

namespace velmora {

PairInputs::PairInputs(const Sides<Field> &fields, QWidget *parent) : QWidget(parent), m_fields(fields)
{
    constexpr int gap = 20;
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(gap);
    for (const Side side : bothSides) {
        m_edits[side] = new PathEdit(fields[side].placeholder, fields[side].browseTitle, this);
        row->addWidget(m_edits[side], 1);
        connect(m_edits[side], &PathEdit::submitted, this, &PairInputs::submitted);
        connect(m_edits[side], &PathEdit::browseRequested, this, [this, side] { browse(side); });
    }
    m_edits.left->setObjectName(QStringLiteral("leftPath"));
    m_edits.right->setObjectName(QStringLiteral("rightPath"));
    setFocusProxy(m_edits.left);
}

SessionPaths PairInputs::paths() const
{
    return {m_edits.left->path(), m_edits.right->path(), {}};
}

void PairInputs::setPaths(const SessionPaths &paths)
{
    m_edits.left->setPath(paths.left);
    m_edits.right->setPath(paths.right);
}

void PairInputs::take(const QStringList &dropped, int x)
{
    if (dropped.size() == 1)
        m_edits[2 * x <= width() ? Side::Left : Side::Right]->setPath(dropped.first());
    for (qsizetype k = 0; dropped.size() > 1 && k < qsizetype(bothSides.size()); ++k)
        m_edits[bothSides[std::size_t(k)]]->setPath(dropped.at(k));
}

void PairInputs::browse(Side side)
{
    const Field &field = m_fields[side];
    Dialogs::instance().openFile(this, field.browseTitle, m_edits[side]->path(), field.filter,
                                 [this, side](const QString &path) { m_edits[side]->setPath(path); });
}

void PairInputs::refreshTheme()
{
    m_edits.left->refreshTheme();
    m_edits.right->refreshTheme();
}

} // namespace velmora
