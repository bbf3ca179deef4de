#pragma once

#include "folder/actions/folder_actions.h"
#include "folder_operations/operation_fixture.h"
#include "folder_operations/scripted_layer.h"
#include "support/files.h"
#include "support/scripted_dialogs.h"

#include <QAbstractButton>
#include <QDialog>
#include <QLabel>
#include <QTest>
#include <QTreeView>
#include <QWidget>

namespace velmora::test {

/// The controller of a comparison of two real folders, with answers in place of a person.
class ActionsFixture {
public:
    explicit ActionsFixture(ScriptedLayer::Script script = [](int, QLatin1String) { return FileError(); });

    /// Makes files as `OperationFixture::make`, and compares.
    void make(const char *words);
    /// Compares the folders anew and tells the controller.
    void compare();

    [[nodiscard]] FolderSelection select(const QStringList &names, std::optional<Side> side = {}) const;
    /// Carries out a command up to its end, or until a window of it is open.
    void carryOut(FolderCommand command, const FolderSelection &selection = {});
    void carryOut(FolderCommand command, const QStringList &names, std::optional<Side> side = {});

    /// The window that a command has opened, or null.
    [[nodiscard]] QDialog *opened() const;
    /// The rows of the list in it, groups and entries, as a person reads them; the temporary folder's path is taken
    /// out.
    [[nodiscard]] QStringList rows(int column = 0) const;
    /// Clicks a button of it and waits for what follows.
    void click(const char *button);

    /// Without the time of day and the temporary folder's path.
    [[nodiscard]] QStringList log() const;
    /// The last question or message; the temporary folder's path is taken out.
    [[nodiscard]] QString asked() const;
    [[nodiscard]] QString askedTitle() const;
    [[nodiscard]] QString without(QString text) const;

    /// What is in a folder of the temporary one, in the form of `make`.
    [[nodiscard]] QString picture(const char *relative) const;
    /// Whether `picture` of both sides has this entry.
    [[nodiscard]] bool has(const char *entry) const;

    OperationFixture files;
    ScriptedDialogs answers;
    ScriptedLayer layer;
    QWidget window;
    FolderActions actions;
    FolderActionContext context;
    QStringList lines;     ///< of the log
    QStringList touched;   ///< of the last command
    int finished = 0;      ///< commands
    QString status;        ///< the last
    bool sawCount = false; ///< progress with a total has come

private:
    void settle();
};

} // namespace velmora::test
