#pragma once

#include "core/runner.h"
#include "filetypes/image/image_job.h"
#include "session/frame/difference_index.h"
#include "session/frame/report_saver.h"
#include "session/session_widget.h"

#include <QPointer>

#include <optional>

namespace velmora {

class ImageBar;
class ImagePropertiesDialog;
class ImageViews;
class NoticeBar;
class PathEdit;
class PixelDetail;
class StatusLine;

/// Compares two images pixel by pixel: both side by side, a map of what differs, and the pixels under the mouse.
class ImageCompareWidget final : public SessionWidget {
    Q_OBJECT
public:
    explicit ImageCompareWidget(SessionHost &host, QWidget *parent = nullptr);

    [[nodiscard]] QString kind() const override { return QStringLiteral("image"); }
    [[nodiscard]] SessionPaths paths() const override;
    void setPaths(const SessionPaths &paths) override;
    void start() override { onCompare(); }
    [[nodiscard]] bool isReading() const override { return m_loading.isRunning(); }
    /// "tolerance", "ignoreAntiAliasing", "view": what the controls show.
    [[nodiscard]] QJsonObject options() const override;
    void setOptions(const QJsonObject &options) override;
    bool setPendingReport(const QString &path) override;
    [[nodiscard]] bool acceptsDroppedPaths() const override { return true; }
    void dropPaths(const QStringList &paths, QPoint position) override;
    void refreshTheme() override;

public Q_SLOTS:
    void onCompare();
    void onBrowseLeft();
    void onBrowseRight();
    void onSwapSides();
    void onZoomIn();
    void onZoomOut();
    void onZoomFit();
    void onToleranceChanged(int value);
    void onExport();

private:
    void buildLayout();
    void connectBar();
    void connectViews();
    void browse(PathEdit &edit, const QString &title);
    [[nodiscard]] DifferenceOptions differenceOptions() const;

    void take(const ImagePair &pair, const SessionPaths &files);
    void showImages();
    void showTitle();
    /// Of the picture that has more.
    [[nodiscard]] int frames() const;
    void showMap();
    void showVerdict();
    /// Makes the map anew; says `message` when it is done.
    void rebuildMap(const QString &message);
    void takeMap(const ShownMap &map, const QString &message);
    void showState();
    void goToRegion(qsizetype region);
    void showProperties();
    void writeReport(const QString &path);

    ImageBar *m_bar;
    PathEdit *m_left;
    PathEdit *m_right;
    NoticeBar *m_verdict;
    PixelDetail *m_detail;
    ImageViews *m_views;
    StatusLine *m_status;
    QPointer<ImagePropertiesDialog> m_properties;
    ReportSaver m_reports;
    Runner m_loading;
    Runner m_mapping;
    ImagePair m_pair;
    SessionPaths m_files; ///< that `m_pair` was loaded from
    DifferenceIndex m_region;
    QString m_pendingReport;
    std::optional<QString> m_nextMessage; ///< of the map to be made when the one that is being made is done
};

} // namespace velmora
