#pragma once

#include "session/document/loaded_text.h"
#include "session/frame/path_edit.h"

#include <QWidget>

#include <optional>

class QComboBox;

namespace velmora {

/// What a run does with a file that was written by somebody else since it was read.
enum class ChangedFile { Reload, KeepLoaded };

/// One text of a session with its file, above its pane: the path, the encoding that the file is read by, and what was
/// read last.
///
/// An input whose path reads "[Clipboard]" holds a text without a file, which is never checked and never read again.
class TextInput final : public QWidget {
    Q_OBJECT
public:
    /// A file that is read here must be smaller than this many bytes.
    static constexpr qint64 sizeLimit = 52'428'801;
    static constexpr qint64 limitInMegabytes = 50;

    /// How an input presents itself; texts are translated.
    struct Words {
        QString objectName;   ///< "left" names the fields "leftPathEdit" and "leftEncoding"
        QString placeholder;  ///< in the empty path
        QString browseTitle;  ///< of the file dialog, and the button's tool tip
        QString encodingHint; ///< tool tip of the encoding
    };

    explicit TextInput(const Words &words, QWidget *parent = nullptr);

    [[nodiscard]] PathEdit &pathEdit() { return *m_pathEdit; }
    [[nodiscard]] QString path() const { return m_pathEdit->path(); }
    void setPath(const QString &path) { m_pathEdit->setPath(path); }

    [[nodiscard]] TextEncoding encoding() const;
    /// Offers `encoding` too when it is none of the usual ones. Without a signal.
    void setEncoding(const TextEncoding &encoding);

    /// What the path reads of a text that was pasted and has no file.
    [[nodiscard]] static QString clipboardPath();

    /// Holds the clipboard's text from now on.
    void takeClipboard();
    /// Holds `text` in the same way.
    void holdText(const LoadedText &text);
    [[nodiscard]] bool isClipboard() const;

    /// Whether there is a text: held, or in an existing regular file.
    [[nodiscard]] bool exists() const;
    /// Whether the file has `limit` bytes or more.
    [[nodiscard]] bool isFileAtLeast(qint64 limit) const;
    /// Whether the file that was read last is still the one of the path and is no longer the same on disk.
    [[nodiscard]] bool isChangedOnDisk() const;

    /// What the next run takes from here.
    [[nodiscard]] TextOrigin origin(ChangedFile changed) const;

    /// What the latest completed run has read, and from which path.
    [[nodiscard]] const LoadedText &loaded() const { return m_loaded; }
    [[nodiscard]] const QString &loadedPath() const { return m_loadedPath; }
    void setLoaded(const LoadedText &loaded, const QString &path);

    /// Exchanges path and texts, not the encoding.
    void swapWith(TextInput &other);

Q_SIGNALS:
    /// A person has chosen another encoding.
    void encodingChosen();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    PathEdit *m_pathEdit;
    QComboBox *m_encoding;
    std::optional<LoadedText> m_clipboard;
    LoadedText m_loaded;
    QString m_loadedPath;
};

} // namespace velmora
