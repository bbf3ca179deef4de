#include "text/text_inputs.h"

#include "session/translate.h"

#include <QBoxLayout>

namespace velmora {

namespace {

constexpr int margin = 6;

TextInput::Words leftWords()
{
    return {QStringLiteral("left"), Velmora::tr("Left file path (drop a file here)..."),
            Velmora::tr("Select left file"), Velmora::tr("Encoding of the left file")};
}

TextInput::Words rightWords()
{
    return {QStringLiteral("right"), Velmora::tr("Right file path (drop a file here)..."),
            Velmora::tr("Select right file"), Velmora::tr("Encoding of the right file")};
}

} // namespace

TextInputs::TextInputs(QWidget *parent)
    : QWidget(parent),
      m_sides{new TextInput(leftWords(), this), new TextInput(rightWords(), this)},
      m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(margin, 2, margin, 4);
    m_row->setSpacing(10);
    for (const Side side : {Side::Left, Side::Right}) {
        at(side).setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        m_row->addWidget(&at(side), 1);
        connect(&at(side).pathEdit(), &PathEdit::browseRequested, this, [this, side] { Q_EMIT browseRequested(side); });
        connect(&at(side).pathEdit(), &PathEdit::submitted, this, &TextInputs::submitted);
        connect(&at(side), &TextInput::encodingChosen, this, [this, side] { Q_EMIT encodingChosen(side); });
    }
    setFocusProxy(m_sides.left);
}

SessionPaths TextInputs::paths() const
{
    return {m_sides.left->path(), m_sides.right->path(), {}};
}

void TextInputs::setPaths(const SessionPaths &paths)
{
    m_sides.left->setPath(paths.left);
    m_sides.right->setPath(paths.right);
}

void TextInputs::apply(const TextSessionOptions &options)
{
    const QString right = options.sameAsLeftFileFormat ? options.leftEncoding : options.rightEncoding;
    m_sides.left->setEncoding(TextEncoding::fromName(options.leftEncoding));
    m_sides.right->setEncoding(TextEncoding::fromName(right));
    m_sides.left->pathEdit().setReadOnly(options.leftReadOnly);
    m_sides.right->pathEdit().setReadOnly(options.rightReadOnly);
}

QString TextInputs::problem() const
{
    if (m_sides.left->path().isEmpty() && m_sides.right->path().isEmpty())
        return Velmora::tr("Select at least one file to compare");
    if (!m_sides.left->exists() && !m_sides.right->exists())
        return Velmora::tr("Neither file exists");
    if (m_sides.left->isFileAtLeast(TextInput::sizeLimit) || m_sides.right->isFileAtLeast(TextInput::sizeLimit)) {
        return Velmora::tr("File too large (limit %1 MB). Use folder compare or split the file first.")
            .arg(TextInput::limitInMegabytes);
    }
    return {};
}

ExternalChange TextInputs::externalChange() const
{
    ExternalChange change;
    if (m_sides.left->isChangedOnDisk())
        change.leftPath = m_sides.left->path();
    if (m_sides.right->isChangedOnDisk())
        change.rightPath = m_sides.right->path();
    return change;
}

void TextInputs::alignTo(const QWidget &leftPane, const QWidget &rightPane)
{
    QMargins margins = m_row->contentsMargins();
    const int rightEdge = mapFromGlobal(rightPane.mapToGlobal(QPoint(rightPane.width(), 0))).x();
    margins.setRight(margin + width() - rightEdge);
    m_row->setContentsMargins(margins);
    m_row->setStretch(0, leftPane.width());
    m_row->setStretch(1, rightPane.width());
}

void TextInputs::refreshTheme()
{
    m_sides.left->pathEdit().refreshTheme();
    m_sides.right->pathEdit().refreshTheme();
}

} // namespace velmora
