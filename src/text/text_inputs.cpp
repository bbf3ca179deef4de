#include "text/text_inputs.h"

#include "session/translate.h"

#include <QBoxLayout>

namespace velmora {

namespace {

constexpr qint64 limitInMegabytes = 50;
constexpr int margin = 6;

} // namespace

TextInputs::TextInputs(QWidget *parent)
    : QWidget(parent),
      m_left(new TextSide(Side::Left, this)),
      m_right(new TextSide(Side::Right, this)),
      m_row(new QHBoxLayout(this))
{
    m_row->setContentsMargins(margin, 2, margin, 4);
    m_row->setSpacing(10);
    for (const Side side : {Side::Left, Side::Right}) {
        at(side).setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
        m_row->addWidget(&at(side), 1);
        connect(&at(side).pathEdit(), &PathEdit::browseRequested, this, [this, side] { Q_EMIT browseRequested(side); });
        connect(&at(side).pathEdit(), &PathEdit::submitted, this, &TextInputs::submitted);
        connect(&at(side), &TextSide::encodingChosen, this, [this, side] { Q_EMIT encodingChosen(side); });
    }
    setFocusProxy(m_left);
}

SessionPaths TextInputs::paths() const
{
    return {m_left->path(), m_right->path(), {}};
}

void TextInputs::setPaths(const SessionPaths &paths)
{
    m_left->setPath(paths.left);
    m_right->setPath(paths.right);
}

void TextInputs::apply(const TextSessionOptions &options)
{
    const QString right = options.sameAsLeftFileFormat ? options.leftEncoding : options.rightEncoding;
    m_left->setEncoding(TextEncoding::fromName(options.leftEncoding));
    m_right->setEncoding(TextEncoding::fromName(right));
    m_left->pathEdit().setReadOnly(options.leftReadOnly);
    m_right->pathEdit().setReadOnly(options.rightReadOnly);
}

QString TextInputs::problem() const
{
    if (m_left->path().isEmpty() && m_right->path().isEmpty())
        return Velmora::tr("Select at least one file to compare");
    if (!m_left->exists() && !m_right->exists())
        return Velmora::tr("Neither file exists");
    if (m_left->isFileAtLeast(sizeLimit) || m_right->isFileAtLeast(sizeLimit)) {
        return Velmora::tr("File too large (limit %1 MB). Use folder compare or split the file first.")
            .arg(limitInMegabytes);
    }
    return {};
}

ExternalChange TextInputs::externalChange() const
{
    ExternalChange change;
    if (m_left->isChangedOnDisk())
        change.leftPath = m_left->path();
    if (m_right->isChangedOnDisk())
        change.rightPath = m_right->path();
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
    m_left->pathEdit().refreshTheme();
    m_right->pathEdit().refreshTheme();
}

} // namespace velmora
