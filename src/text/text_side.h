#pragma once

#include "session/frame/path_edit.h"
#include "text/text_compare_job.h"

#include <QWidget>

#include <optional>

class QComboBox;

namespace velmora {

/// What a comparison does with a file that was written by somebody else since it was read.
enum class ChangedFile { Reload, KeepLoaded };

/// One side of the session, above its text: the path, the encoding that its file is read by, and what was read last.
///
/// A side whose path reads "[Clipboard]" holds a text without a file, which is never checked and never read again.
class TextSide final : public QWidget {
    Q_OBJECT
public:
    explicit TextSide(Side side, QWidget *parent = nullptr);

    [[nodiscard]] PathEdit &pathEdit() { return *m_pathEdit; }
    [[nodiscard]] QString path() const { return m_pathEdit->path(); }
    void setPath(const QString &path) { m_pathEdit->setPath(path); }

    [[nodiscard]] TextEncoding encoding() const;
    /// Offers `encoding` too when it is none of the usual ones. Without a signal.
    void setEncoding(const TextEncoding &encoding);

    /// What the path of a side reads whose text has no file.
    [[nodiscard]] static QString clipboardPath();

    /// Holds the clipboard's text from now on.
    void takeClipboard();
    /// Holds `text` in the same way.
    void holdText(const LoadedSide &text);
    [[nodiscard]] bool isClipboard() const;

    /// Whether there is a text: held, or in an existing regular file.
    [[nodiscard]] bool exists() const;
    /// Whether the file has `limit` bytes or more.
    [[nodiscard]] bool isFileAtLeast(qint64 limit) const;
    /// Whether the file that was read last is still the one of the path and is no longer the same on disk.
    [[nodiscard]] bool isChangedOnDisk() const;

    /// What the next comparison takes from this side.
    [[nodiscard]] SideInput input(ChangedFile changed) const;

    /// What the latest completed comparison has read, and from which path.
    [[nodiscard]] const LoadedSide &loaded() const { return m_loaded; }
    [[nodiscard]] const QString &loadedPath() const { return m_loadedPath; }
    void setLoaded(const LoadedSide &loaded, const QString &path);

    /// Exchanges path and texts, not the encoding.
    void swapWith(TextSide &other);

Q_SIGNALS:
    /// A person has chosen another encoding.
    void encodingChosen();

protected:
    void resizeEvent(QResizeEvent *event) override;

private:
    PathEdit *m_pathEdit;
    QComboBox *m_encoding;
    std::optional<LoadedSide> m_clipboard;
    LoadedSide m_loaded;
    QString m_loadedPath;
};

} // namespace velmora
