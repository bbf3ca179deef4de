#pragma once

#include <QString>

#include <functional>

class QWidget;

namespace velmora {

/// The standard questions that a program asks in a window of its own.
///
/// Everything modal goes through this seam, so that tests can answer in place of a person. Nothing here blocks: an
/// answer arrives by callback, later, and not at all when `parent` is gone by then. A cancelled file, number or text
/// question gives no callback. Texts are already translated.
class Dialogs {
public:
    enum class Tone { Information, Warning, Critical };

    /// One button of a question, with the answer it gives.
    struct Choice {
        QString text;
        int answer = 0;
        bool isDefault = false;
        bool isEscape = false; ///< also the answer when the box is closed
    };

    using PathAnswer = std::function<void(const QString &path)>;
    using ChoiceAnswer = std::function<void(int answer)>;
    using YesNoAnswer = std::function<void(bool yes)>;
    using NumberAnswer = std::function<void(int number)>;
    using TextAnswer = std::function<void(const QString &text)>;

    Dialogs() = default;
    Dialogs(const Dialogs &) = delete;
    Dialogs &operator=(const Dialogs &) = delete;
    virtual ~Dialogs();

    /// The dialogs in use: real windows, unless a test has installed its own.
    [[nodiscard]] static Dialogs &instance();
    /// Puts `dialogs` in use, which stays the caller's; null brings the real ones back.
    static void install(Dialogs *dialogs);

    virtual void tell(QWidget *parent, Tone tone, const QString &title, const QString &text,
                      std::function<void()> closed = {});
    virtual void ask(QWidget *parent, Tone tone, const QString &title, const QString &text,
                     const QList<Choice> &choices, ChoiceAnswer answered);
    void askYesNo(QWidget *parent, const QString &title, const QString &text, bool yesIsDefault, YesNoAnswer answered);

    /// `start` is a folder or a file in it; with a bare name or empty, the folder used last, at first the one for
    /// documents.
    virtual void openFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                          PathAnswer chosen);
    virtual void openFolder(QWidget *parent, const QString &title, const QString &start, PathAnswer chosen);
    /// Asks before it replaces a file that exists.
    virtual void saveFile(QWidget *parent, const QString &title, const QString &start, const QString &filter,
                          PathAnswer chosen);
    virtual void askNumber(QWidget *parent, const QString &title, const QString &label, int value, int minimum,
                           int maximum, NumberAnswer answered);
    /// `value` stands in the line, selected. What is answered may be empty.
    virtual void askText(QWidget *parent, const QString &title, const QString &label, const QString &value,
                         TextAnswer answered);
    /// A text that is not shown while it is typed.
    virtual void askPassword(QWidget *parent, const QString &title, const QString &label, TextAnswer answered);
};

/// What a save dialog starts with: a file `name` in the folder of the file `path`, where that has one.
[[nodiscard]] QString besideFile(const QString &path, const QString &name);

} // namespace velmora
