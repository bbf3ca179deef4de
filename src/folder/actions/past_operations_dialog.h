#pragma once

#include "core/runner.h"
#include "folder/operations/operation_journal.h"

#include <QDialog>

class QLabel;
class QPushButton;
class QStackedWidget;
class QTreeView;

namespace velmora {

class FileLayer;
class FolderActions;
class PastOperationsModel;

/// The operations on files of the past, the newest first: what each has done, and the ways to take it back or, after a
/// crash, to go on with it. Not modal; opened with show(). Other windows stay as they are while it works.
class PastOperationsDialog final : public QDialog {
    Q_OBJECT
public:
    explicit PastOperationsDialog(QWidget *parent = nullptr);
    /// With another file system, which outlives the dialog, and another folder for the journal: for tests.
    PastOperationsDialog(FileLayer &files, const QString &journalFolder, QWidget *parent = nullptr);
    ~PastOperationsDialog() override;

    /// Selects the run and says above the list that the program ended while it was at work.
    void tellInterrupted(const QString &id);

    /// Looks, without holding up anything, whether a crash has ended runs that nobody has been told of, and opens the
    /// dialog for them. Each is told of once.
    static void offerInterrupted(QWidget &window);
    /// The runs that `offerInterrupted` would tell of now. For a worker.
    [[nodiscard]] static QStringList interruptedRuns(FileLayer &files, const QString &journalFolder);

public Q_SLOTS:
    /// While something is at work this only stops it.
    void reject() override;

private:
    void buildLayout();
    void connectButtons();
    void load();
    void takeRuns(const JournalList &list);
    void showSelected();
    void showSteps(const PastRun &run);
    void showPossible();
    [[nodiscard]] int selectedRow() const;

    FileLayer &m_files;
    QString m_journalFolder;
    PastOperationsModel *m_model;
    FolderActions *m_actions;
    QLabel *m_heading;
    QStackedWidget *m_pages;
    QTreeView *m_list;
    QTreeView *m_steps;
    QLabel *m_status;
    QPushButton *m_undo;
    QPushButton *m_continue;
    QPushButton *m_close;
    QString m_wanted; ///< the run to be selected when the list is there
    Runner m_loader;
    Runner m_reader;
};

} // namespace velmora
