#include "text/text_side.h"

#include "session/translate.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QClipboard>
#include <QComboBox>
#include <QFileInfo>
#include <QGuiApplication>
#include <QLineEdit>

namespace velmora {

namespace {

constexpr int shortestPath = 24; // characters, with the button beside them
constexpr int usualEncoding = 9; // wide characters: "Auto detect", "UTF-16 LE"

} // namespace

TextSide::TextSide(Side side, QWidget *parent) : QWidget(parent), m_encoding(new QComboBox(this))
{
    const bool left = side == Side::Left;
    m_pathEdit = new PathEdit(left ? Velmora::tr("Left file path (drop a file here)...")
                                   : Velmora::tr("Right file path (drop a file here)..."),
                              left ? Velmora::tr("Select left file") : Velmora::tr("Select right file"), this);
    m_pathEdit->lineEdit().setObjectName(left ? QStringLiteral("leftPathEdit") : QStringLiteral("rightPathEdit"));

    m_encoding->setObjectName(left ? QStringLiteral("leftEncoding") : QStringLiteral("rightEncoding"));
    m_encoding->setToolTip(left ? Velmora::tr("Encoding of the left file") : Velmora::tr("Encoding of the right file"));
    m_encoding->setAccessibleName(m_encoding->toolTip());
    m_encoding->setFocusPolicy(Qt::TabFocus);
    // The path has more to say than the longest name of an encoding, which the list shows whole.
    m_encoding->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_encoding->setMinimumContentsLength(usualEncoding);
    for (const QString &name : TextEncoding::offeredNames()) {
        const TextEncoding encoding = TextEncoding::fromName(name);
        m_encoding->addItem(encoding.isAutomatic() ? Velmora::tr("Auto detect") : name, encoding.name());
    }
    m_encoding->view()->setMinimumWidth(m_encoding->view()->sizeHintForColumn(0));

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(4);
    row->addWidget(m_pathEdit, 1);
    row->addWidget(m_encoding);
    setFocusProxy(m_pathEdit);
    connect(m_encoding, &QComboBox::activated, this, &TextSide::encodingChosen);
    connect(&m_pathEdit->lineEdit(), &QLineEdit::textChanged, &m_pathEdit->lineEdit(), &QWidget::setToolTip);
}

void TextSide::resizeEvent(QResizeEvent * /*event*/)
{
    // A path of which nothing is seen is worse than an encoding that only the settings tell.
    const int pathWidth = shortestPath * fontMetrics().averageCharWidth();
    m_encoding->setVisible(width() >= pathWidth + m_encoding->sizeHint().width());
}

TextEncoding TextSide::encoding() const
{
    return TextEncoding::fromName(m_encoding->currentData().toString());
}

void TextSide::setEncoding(const TextEncoding &encoding)
{
    const QString name = encoding.name();
    if (m_encoding->findData(name) < 0)
        m_encoding->addItem(name, name);
    m_encoding->setCurrentIndex(m_encoding->findData(name));
}

QString TextSide::clipboardPath()
{
    return QStringLiteral("[Clipboard]");
}

void TextSide::takeClipboard()
{
    LoadedSide text;
    text.missing = false;
    text.text =
        decodeText(QGuiApplication::clipboard()->text().toUtf8(), TextEncoding::fromName(QStringLiteral("UTF-8")));
    holdText(text);
}

void TextSide::holdText(const LoadedSide &text)
{
    m_clipboard = text;
    setPath(clipboardPath());
}

bool TextSide::isClipboard() const
{
    return m_clipboard && path() == clipboardPath();
}

bool TextSide::exists() const
{
    return isClipboard() || (!path().isEmpty() && QFileInfo(path()).isFile());
}

bool TextSide::isFileAtLeast(qint64 limit) const
{
    return !isClipboard() && exists() && QFileInfo(path()).size() >= limit;
}

bool TextSide::isChangedOnDisk() const
{
    if (isClipboard() || m_loaded.missing || m_loadedPath != path())
        return false;
    return FileStamp::of(m_loadedPath) != m_loaded.stamp;
}

SideInput TextSide::input(ChangedFile changed) const
{
    SideInput input;
    input.encoding = encoding();
    if (isClipboard())
        input.loaded = m_clipboard;
    else if (changed == ChangedFile::KeepLoaded && isChangedOnDisk())
        input.loaded = m_loaded;
    else if (exists())
        input.path = path();
    return input;
}

void TextSide::setLoaded(const LoadedSide &loaded, const QString &path)
{
    m_loaded = loaded;
    m_loadedPath = path;
}

void TextSide::swapWith(TextSide &other)
{
    const QString own = path();
    setPath(other.path());
    other.setPath(own);
    std::swap(m_clipboard, other.m_clipboard);
    std::swap(m_loaded, other.m_loaded);
    std::swap(m_loadedPath, other.m_loadedPath);
}

} // namespace velmora
