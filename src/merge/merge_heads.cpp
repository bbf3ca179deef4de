#include "merge/merge_heads.h"

#include "session/dialogs.h"
#include "session/frame/elided_label.h"
#include "session/shown_path.h"
#include "session/translate.h"

#include <QBoxLayout>
#include <QLabel>

namespace velmora {

namespace {

constexpr int margin = 6;

QHBoxLayout *rowIn(QWidget *head, const QString &name)
{
    auto *row = new QHBoxLayout(head);
    row->setContentsMargins(margin, 2, margin, 3);
    row->setSpacing(margin);
    auto *label = new QLabel(name, head);
    QFont bold = label->font();
    bold.setBold(true);
    label->setFont(bold);
    row->addWidget(label);
    return row;
}

} // namespace

MergeHeads::MergeHeads(QWidget *session) : QObject(session), m_session(session)
{
    addInput(MergeSource::Left, Velmora::tr("Left"),
             {QStringLiteral("left"), Velmora::tr("Left file path (drop a file here)..."),
              Velmora::tr("Select left file"), Velmora::tr("Encoding of the left file")});
    addInput(MergeSource::Base, Velmora::tr("Base"),
             {QStringLiteral("base"), Velmora::tr("File that both come from (drop it here)..."),
              Velmora::tr("Select base file"), Velmora::tr("Encoding of the base file")});
    addInput(MergeSource::Right, Velmora::tr("Right"),
             {QStringLiteral("right"), Velmora::tr("Right file path (drop a file here)..."),
              Velmora::tr("Select right file"), Velmora::tr("Encoding of the right file")});
    auto *head = new QWidget(session);
    m_heads[resultPane] = head;
    QHBoxLayout *row = rowIn(head, Velmora::tr("Result"));
    m_resultPath = new ElidedLabel({}, head);
    m_resultPath->setObjectName(QStringLiteral("resultPath"));
    row->addWidget(m_resultPath, 1);
    head->setToolTip(Velmora::tr("The letter beside a line says where it comes from: L left, B base, R right, "
                                 "= both alike, H by hand"));
    m_inputs[resultPane] = new TextInput({QStringLiteral("result"), {}, {}, {}}, session);
    m_inputs[resultPane]->hide();
    showResult({});
}

void MergeHeads::addInput(MergeSource source, const QString &name, const TextInput::Words &words)
{
    const auto index = std::size_t(source);
    auto *head = new QWidget(m_session);
    auto *input = new TextInput(words, head);
    input->setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    input->setMinimumWidth(40);
    rowIn(head, name)->addWidget(input, 1);
    m_heads[index] = head;
    m_inputs[index] = input;
    connect(&input->pathEdit(), &PathEdit::submitted, this, &MergeHeads::submitted);
    connect(input, &TextInput::encodingChosen, this, &MergeHeads::encodingChosen);
    connect(&input->pathEdit(), &PathEdit::browseRequested, this, [this, input, title = words.browseTitle] {
        Dialogs::instance().openFile(m_session, title, input->path(), {},
                                     [input](const QString &path) { input->setPath(path); });
    });
}

SessionPaths MergeHeads::paths() const
{
    return {input(MergeSource::Left).path(), input(MergeSource::Right).path(), input(MergeSource::Base).path()};
}

void MergeHeads::setPaths(const SessionPaths &paths)
{
    input(MergeSource::Left).setPath(paths.left);
    input(MergeSource::Right).setPath(paths.right);
    input(MergeSource::Base).setPath(paths.base);
}

bool MergeHeads::isEmpty() const
{
    return paths() == SessionPaths();
}

void MergeHeads::showResult(const QString &path)
{
    m_resultPath->setText(path.isEmpty() ? Velmora::tr("not saved yet") : shownPath(path));
}

MergeSource MergeHeads::sourceUnder(QPoint position) const
{
    MergeSource found = MergeSource::Left;
    for (const MergeSource source : {MergeSource::Base, MergeSource::Right}) {
        const QWidget *head = m_heads[std::size_t(source)];
        if (head->isVisible() && position.x() >= head->mapTo(m_session, QPoint()).x())
            found = source;
    }
    return found;
}

void MergeHeads::refreshTheme()
{
    for (std::size_t pane = 0; pane < mergeSourceCount; ++pane)
        m_inputs[pane]->pathEdit().refreshTheme();
}

} // namespace velmora
