#pragma once

#include "core/passing_folder.h"
#include "core/runner.h"
#include "folder/browse/archive_rows.h"
#include "session/frame/files_session.h"
#include "vfs/place/tree_path.h"

#include <QByteArray>
#include <QList>

#include <memory>

class QLabel;
class QPushButton;

namespace velmora {

class ArchiveView;
class EntryExtraction;

/// The session that looks into one archive: its entries as a tree, what is in the current one, entries copied out or
/// opened elsewhere, and a test of all of them. A password is asked for once.
class ArchiveBrowseWidget final : public FilesSession {
    Q_OBJECT
public:
    explicit ArchiveBrowseWidget(SessionHost &host, QWidget *parent = nullptr);
    ~ArchiveBrowseWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("archivebrowse"); }
    void start() override { onOpen(); }
    [[nodiscard]] bool hasUnsavedChanges() const override;
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    void refreshTheme() override;

    [[nodiscard]] ArchiveView &view() { return *m_view; }
    [[nodiscard]] const SharedListing &listing() const { return m_listing; }

public Q_SLOTS:
    void onOpen();
    void onExtract();
    void onExtractAll();
    void onTest();
    /// Opens the current file in the session that suits what is in it.
    void onOpenEntry();
    void onCopyPaths();
    void onPassword();
    void onCancel() override;

protected:
    [[nodiscard]] bool isBusy() const override;

private:
    /// An archive that was opened, as rows.
    struct Opened {
        SharedListing listing; ///< null where there is a fault
        TreeAt tree;
    };

    void buildCommands();
    void connectParts();
    [[nodiscard]] static Opened open(const ArchiveRequest &request, const CancelFlag &cancel, Progress &progress);
    void take(const Opened &opened, const QString &path);
    void showOpened(const Opened &opened, const QString &path);
    void takeTest(const ArchiveTest &test);
    void extract(const QStringList &paths);
    [[nodiscard]] QStringList selectedPaths() const;
    void showCommands();
    void openMenu(QPoint global);

    QPushButton *m_extract = nullptr;
    QPushButton *m_extractAll = nullptr;
    QPushButton *m_test = nullptr;
    ArchiveView *m_view;
    QLabel *m_facts;
    EntryExtraction *m_extraction;
    SharedListing m_listing;
    QList<ArchiveProblem> m_problems; ///< of opening
    QString m_shownPath;              ///< of the archive that is shown
    QString m_askedFor;               ///< the archive whose password was asked for last
    QByteArray m_password;
    std::unique_ptr<PassingFolder> m_copies; ///< of entries that were opened elsewhere
    Runner m_opener;
};

} // namespace velmora
