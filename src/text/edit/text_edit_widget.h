#pragma once

#include "core/runner.h"
#include "session/session_widget.h"
#include "text/edit/text_edit_job.h"

namespace velmora {

class ChangeWatcher;
class ConflictNotice;
class EditedTexts;
class FindBar;
class FindController;
class NoticeBar;
class PaneOptions;
class PaneView;
class ProgressStrip;
class RecoveryKeeper;
class ReplaceController;
class StatusLine;
class TextEditBar;
class TextEditComparing;
class TextEditFormat;
class TextEditPlace;
class TextEditWishes;
class TextInput;
struct UnsavedTexts;
enum class ChangedFile;

/// The session of kind "textedit": one text with its file, or a new one without, in one pane.
///
/// The file is read on a worker; the text before it stays shown until that is done, also when it fails. The path is the
/// left one of the session's paths. A file that is not there yet is an empty text, which saving makes.
class TextEditWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit TextEditWidget(SessionHost &host, QWidget *parent = nullptr);
    ~TextEditWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("textedit"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    /// Reads the file of the path; begins an empty text where there is no path.
    void start() override;
    [[nodiscard]] bool isReading() const override { return m_runner.isRunning(); }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    /// Opens each file; the first one here when nothing was written here yet.
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;
    [[nodiscard]] bool canEdit(EditCommand command) const override;
    void edit(EditCommand command) override;
    [[nodiscard]] bool canEnableEditing() const override { return true; }
    [[nodiscard]] bool isEditingEnabled() const override;
    void setEditingEnabled(bool enabled) override;
    [[nodiscard]] bool hasUnsavedChanges() const override;
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    void recover(const RecoveryRecord &record, std::function<void()> kept) override;

    [[nodiscard]] PaneView &view() { return *m_view; }

public Q_SLOTS:
    void onNew();
    void onOpen();
    void onSave();
    void onSaveAs();
    void onReload();

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void changeEvent(QEvent *event) override;

private:
    void buildLayout();
    void connectBar();
    void connectInput();
    void connectTexts();
    /// Opens a file here where nothing was written yet, and in a tab of its own otherwise.
    void openFile(const QString &path);
    void chooseEncoding();
    void load(ChangedFile changed);
    void takeOutcome(RunOutcome<TextEditResult> &&outcome, const QString &path);
    void showText(const LoadedText &loaded, const QString &path, std::shared_ptr<const PlainDocument> document);
    void showLoaded();
    void takeSaved();
    /// Lets the window put the file into its history.
    void remember();
    void showFormat();
    void showTitle();
    void showState();
    void showMessage(const QString &message);
    void showContextMenu(QPoint at);
    void keepRecovered();
    [[nodiscard]] UnsavedTexts unsavedTexts() const;
    [[nodiscard]] bool isPristine() const;
    [[nodiscard]] bool isWriteProtected() const;

    TextEditBar *m_bar;
    TextInput *m_input;
    ProgressStrip *m_progress;
    NoticeBar *m_changeBar;
    ConflictNotice *m_conflicts;
    PaneView *m_view;
    EditedTexts *m_texts;
    PaneOptions *m_viewOptions;
    FindBar *m_findBar;
    FindController *m_finder;
    ReplaceController *m_replacer;
    ChangeWatcher *m_changes;
    StatusLine *m_foot;
    TextEditPlace *m_place;
    TextEditComparing *m_comparing;
    TextEditFormat *m_format;
    TextEditWishes *m_wishes;
    RecoveryKeeper *m_keeper;
    QString m_title;                   ///< of the tab, once the session has told one
    std::function<void()> m_recovered; ///< to be called when recovered text is shown and kept again
    Runner m_runner;
};

} // namespace velmora
