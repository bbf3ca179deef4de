#pragma once

#include "session/frame/report_saver.h"
#include "session/session_record.h"
#include "settings/options/text_session_options.h"
#include "text/engine/marked_report.h"
#include "text/text_compare_job.h"

#include <memory>
#include <optional>

namespace velmora {

/// All that an HTML report of a text comparison says, as it was compared.
struct TextReportContent {
    std::shared_ptr<const DiffDocument> document; ///< null for no result
    TextLines left;
    TextLines right;
    TextSessionOptions options;
    SessionPaths paths;
    std::optional<MarkedReportForm> marked = {}; ///< for a report with marks; the usual one without
};

/// What a report with marks looks like in the colours of the window; `context` as there.
[[nodiscard]] MarkedReportForm markedReportForm(std::optional<qsizetype> context);

/// Writes `content`, which has a result.
[[nodiscard]] ReportSaver::Writer textReportWriter(const TextReportContent &content);

} // namespace velmora
