#include "session/document/text_input.h"

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

TextInput::TextInput(const Words &words, QWidget *parent) : QWidget(parent), m_encoding(new QComboBox(this))
{
    m_pathEdit = new PathEdit(words.placeholder, words.browseTitle, this);
    m_pathEdit->lineEdit().setObjectName(words.objectName + QStringLiteral("PathEdit"));

    m_encoding->setObjectName(words.objectName + QStringLiteral("Encoding"));
    m_encoding->setToolTip(words.encodingHint);
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
    connect(m_encoding, &QComboBox::activated, this, &TextInput::encodingChosen);
    connect(&m_pathEdit->lineEdit(), &QLineEdit::textChanged, &m_pathEdit->lineEdit(), &QWidget::setToolTip);
}

void TextInput::resizeEvent(QResizeEvent * /*event*/)
{
    // A path of which nothing is seen is worse than an encoding that only the settings tell.
    const int pathWidth = shortestPath * fontMetrics().averageCharWidth();
    m_encoding->setVisible(width() >= pathWidth + m_encoding->sizeHint().width());
}

TextEncoding TextInput::encoding() const
{
    return TextEncoding::fromName(m_encoding->currentData().toString());
}

void TextInput::setEncoding(const TextEncoding &encoding)
{
    const QString name = encoding.name();
    if (m_encoding->findData(name) < 0)
        m_encoding->addItem(name, name);
    m_encoding->setCurrentIndex(m_encoding->findData(name));
}

QString TextInput::clipboardPath()
{
    return QStringLiteral("[Clipboard]");
}

void TextInput::takeClipboard()
{
    LoadedText text;
    text.missing = false;
    text.text =
        decodeText(QGuiApplication::clipboard()->text().toUtf8(), TextEncoding::fromName(QStringLiteral("UTF-8")));
    holdText(text);
}

void TextInput::holdText(const LoadedText &text)
{
    m_clipboard = text;
    setPath(clipboardPath());
}

bool TextInput::isClipboard() const
{
    return m_clipboard && path() == clipboardPath();
}

bool TextInput::exists() const
{
    return isClipboard() || (!path().isEmpty() && QFileInfo(path()).isFile());
}

bool TextInput::isFileAtLeast(qint64 limit) const
{
    return !isClipboard() && exists() && QFileInfo(path()).size() >= limit;
}

bool TextInput::isChangedOnDisk() const
{
    if (isClipboard() || m_loaded.missing || m_loadedPath != path())
        return false;
    return FileStamp::of(m_loadedPath) != m_loaded.stamp;
}

TextOrigin TextInput::origin(ChangedFile changed) const
{
    TextOrigin origin;
    origin.encoding = encoding();
    if (isClipboard())
        origin.loaded = m_clipboard;
    else if (changed == ChangedFile::KeepLoaded && isChangedOnDisk())
        origin.loaded = m_loaded;
    else if (exists())
        origin.path = path();
    return origin;
}

void TextInput::setLoaded(const LoadedText &loaded, const QString &path)
{
    m_loaded = loaded;
    m_loadedPath = path;
}

void TextInput::swapWith(TextInput &other)
{
    const QString own = path();
    setPath(other.path());
    other.setPath(own);
    std::swap(m_clipboard, other.m_clipboard);
    std::swap(m_loaded, other.m_loaded);
    std::swap(m_loadedPath, other.m_loadedPath);
}

} // namespace velmora
