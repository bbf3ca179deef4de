#pragma once

#include "core/runner.h"
#include "folder/actions/plan_session.h"
#include "folder/engine/folder_merge.h"
#include "folder/operations/text_conflicts.h"

#include <QModelIndexList>

#include <functional>
#include <memory>
#include <vector>

class QComboBox;
class QLabel;

namespace velmora {

class AwaitedTexts;
class FolderMergeBar;
class FolderMergeModel;
class NoticeBar;

/// The session that merges two versions of a folder over the one that both come from, file by file, into another
/// folder.
class FolderMergeWidget final : public PlanSession {
    Q_OBJECT
public:
    explicit FolderMergeWidget(SessionHost &host, QWidget *parent = nullptr);
    ~FolderMergeWidget() override;

    [[nodiscard]] QString kind() const override { return QStringLiteral("foldermerge"); }
    void start() override { onCompare(); }

public Q_SLOTS:
    void onCompare();
    void onMergeTo();

Q_SIGNALS:
    /// A person wants to merge the three versions of one file; the path of a version that is missing is empty.
    void openThreeWayMerge(const QString &basePath, const QString &leftPath, const QString &rightPath);

protected:
    [[nodiscard]] QString closeQuestion() const override;
    [[nodiscard]] Sides<QString> writtenFolders() const override { return {m_target, {}}; }
    void fillRowMenu(QMenu &menu) override;
    void openCurrent() override;
    void showEvent(QShowEvent *event) override;

private:
    /// What was found, with the folder of its merged texts.
    struct Result {
        FolderMergeResult trees;
        TextConflicts conflicts;
    };

    void buildView();
    void connectFilter();
    void connectBar();

    [[nodiscard]] QString problemOfPaths() const;
    void takeResult(RunOutcome<Result> &&outcome);
    void tell(const FolderMergeResult &result);
    void showState();
    void showNotice();
    void showOffer();
    void takeCleanTexts();
    void takeText(const QString &path);
    void selectFolder();
    void openMerge(const FolderMergeFile &file);
    void showMergedText(const FolderMergeFile &file);
    void askWhatToOpen(const FolderMergeFile &file);
    [[nodiscard]] SessionPaths versionsOf(const FolderMergeFile &file) const;
    void changeSelected(const std::function<void(const QModelIndexList &)> &change);
    void step(int direction);

    void considerTarget(const QString &target);
    void survey(const QString &target);
    void considerPlan(const OperationPlan &plan, const QString &target);
    void run(const OperationPlan &plan);
    void takeRun(const PlanRunResult &result, bool wasCancelled);
    [[nodiscard]] QString title() const;

    FolderMergeBar *m_bar;
    QComboBox *m_filter;
    FolderMergeModel *m_model;
    NoticeBar *m_offer;
    QLabel *m_open; ///< how many conflicts nobody has decided

    bool m_hasResult = false;
    MergeVersions<QString> m_compared; ///< the folders of the result
    std::vector<qsizetype> m_clean;    ///< conflicts that merge cleanly as texts
    std::shared_ptr<AwaitedTexts> m_texts;
    QString m_target; ///< the latest one
};

} // namespace velmora
