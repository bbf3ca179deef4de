#pragma once

#include "core/sides.h"
#include "session/session_record.h"
#include "text/result/verdict.h"

#include <QObject>

#include <memory>

namespace velmora {

class DiffView;
class NoticeBar;
class SessionHost;

/// Decides what is shown of a result: the rows, a card on a side that has no text to show, and the verdict above.
class ResultPresenter final : public QObject {
    Q_OBJECT
public:
    /// All outlive the presenter.
    ResultPresenter(SessionHost &host, DiffView &view, NoticeBar &bar, QObject *parent);

    struct Result {
        std::shared_ptr<const DiffDocument> document;
        Sides<LoadedText> sides;
        SessionPaths paths;
        TextSessionOptions options;
    };

    /// Says before the first result whether one is on its way.
    void showRunning(bool running);

    /// Shows `result` instead of the one before: from its top, or at the same place when it is of the same files.
    void show(Result result);

    /// Takes up what became of the texts by editing, which the view shows already.
    void takeEdited(std::shared_ptr<const DiffDocument> document, const TextLines &left, const TextLines &right);

    /// What the result has found, with unimportant rows where these count.
    [[nodiscard]] const Findings &findings() const noexcept { return m_findings; }

private:
    void present(bool keepsPlace = false);
    void presentSide(Side side, bool hidesText);
    void offerBinary(Side side);
    void showVerdict();
    /// The name of the file type, where indentation has meaning in it.
    [[nodiscard]] QString indentedType() const;

    SessionHost &m_host;
    DiffView &m_view;
    NoticeBar &m_bar;
    Findings m_findings;
    Result m_result;       ///< without a document before the first
    SessionPaths m_asText; ///< the files whose binary content a person wants to see as text
};

} // namespace velmora
