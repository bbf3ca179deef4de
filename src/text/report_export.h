#pragma once

#include "core/runner.h"
#include "session/session_record.h"
#include "settings/options/text_session_options.h"
#include "text/engine/marked_report.h"
#include "text/text_compare_job.h"

#include <QObject>

#include <memory>
#include <optional>

namespace velmora {

/// Writes HTML reports of comparison results on a worker, one after the other.
class ReportExport final : public QObject {
    Q_OBJECT
public:
    explicit ReportExport(QObject *parent = nullptr);

    /// All that a report says, as it was compared.
    struct Content {
        std::shared_ptr<const DiffDocument> document; ///< null for no result
        TextLines left;
        TextLines right;
        TextSessionOptions options;
        SessionPaths paths;
        std::optional<MarkedReportForm> marked = {}; ///< for a report with marks; the usual one without
    };

    /// What a report with marks looks like in the colours of the window; `context` as there.
    [[nodiscard]] static MarkedReportForm markedForm(std::optional<qsizetype> context);

    /// Writes `content` to the file `path` and ends with one of the signals. A report that is still being written is
    /// finished first.
    void write(const Content &content, const QString &path);

Q_SIGNALS:
    void written(const QString &path);
    /// `reason`: in the system's own words, if it has any.
    void failed(const QString &path, const QString &reason);

private:
    struct Order {
        Content content;
        QString path;
    };

    void startNext();

    QList<Order> m_orders; ///< the first one is being written while the runner runs
    Runner m_runner;
};

} // namespace velmora
