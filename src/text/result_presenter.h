#pragma once

#include "session/session_record.h"
#include "text/text_compare_job.h"

#include <QObject>

#include <memory>

namespace velmora {

class DiffView;
class SessionHost;

/// Decides what the view shows of a result: the rows, a card on a side that has no text to show, and a banner when
/// nothing differs.
class ResultPresenter final : public QObject {
    Q_OBJECT
public:
    /// Both outlive the presenter.
    ResultPresenter(SessionHost &host, DiffView &view, QObject *parent);

    struct Result {
        std::shared_ptr<const DiffDocument> document;
        LoadedSide left;
        LoadedSide right;
        SessionPaths paths;
    };

    /// Says before the first result whether one is on its way.
    void showRunning(bool running);

    /// Shows `result` instead of the one before: from its top, or at the same place when it is of the same files.
    void show(Result result);

private:
    [[nodiscard]] const LoadedSide &loaded(Side side) const;
    void present(bool keepsPlace = false);
    void presentSide(Side side, bool hidesText);
    void offerBinary(Side side);

    SessionHost &m_host;
    DiffView &m_view;
    Result m_result;       ///< without a document before the first
    SessionPaths m_asText; ///< the files whose binary content a person wants to see as text
};

} // namespace velmora
