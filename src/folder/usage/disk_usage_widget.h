#pragma once

#include "folder/actions/plan_run.h"
#include "folder/usage/usage_rows.h"
#include "session/frame/files_session.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QSpinBox;

namespace velmora {

class UsageView;

/// The session that shows how the space under one folder is divided among what is in it, as a tree and a map, with what
/// has grown since the scan before.
class DiskUsageWidget final : public FilesSession {
    Q_OBJECT
public:
    explicit DiskUsageWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("diskusage"); }
    void start() override { onScan(); }
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    [[nodiscard]] bool hasUnsavedChanges() const override { return m_deletes && isReading(); }
    void confirmClose(std::function<void(bool mayClose)> answered) override;
    void refreshTheme() override;

    [[nodiscard]] UsageView &view() { return *m_view; }

public Q_SLOTS:
    void onScan();
    void onExportCsv();
    /// Tells what has grown since a snapshot that is asked for.
    void onCompareSnapshot();
    void onDelete();
    void onShowInFileManager();
    void onCopyPaths();

private:
    void buildOptions();
    void buildCommands();
    [[nodiscard]] DiskUsageRequest request() const;
    void takeScan(const SharedUsage &result);
    void tellScan(const DiskUsage &usage);
    void showEmpty();
    void exportTo(const QString &path);
    void compareSnapshot(const QString &path);
    void openMenu(QPoint global);

    void prepareDeletion(const QStringList &paths);
    void discountListed(OperationPlan &plan) const;
    void considerDeletion(OperationPlan plan);
    void runDeletion(const OperationPlan &plan);
    void takeDeletion(const PlanRunResult &result);

    QSpinBox *m_depth;
    QCheckBox *m_files;
    QCheckBox *m_hidden;
    QComboBox *m_colouring;
    QPushButton *m_export;
    QPushButton *m_since;
    UsageView *m_view;
    QLabel *m_disk;
    SharedUsage m_result;
    DiskUsageRequest m_scanned; ///< what the result is of
    bool m_deletes = false;
    QString m_remark; ///< of what was done before the scan that is under way, said when it is over
};

} // namespace velmora
