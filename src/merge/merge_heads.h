#pragma once

#include "merge/view/merge_document.h"
#include "session/document/text_input.h"
#include "session/session_record.h"

#include <QObject>

#include <array>

namespace velmora {

class ElidedLabel;

/// What stands above the panes of a merge: the file of each text with its encoding, and the file that the result goes
/// to.
class MergeHeads final : public QObject {
    Q_OBJECT
public:
    /// The heads are the caller's to place.
    explicit MergeHeads(QWidget *session);

    [[nodiscard]] QWidget *head(std::size_t pane) const { return m_heads[pane]; }
    [[nodiscard]] TextInput &input(MergeSource source) const { return *m_inputs[std::size_t(source)]; }
    /// The result's file, which is never shown: it is chosen when the result is saved.
    [[nodiscard]] TextInput &result() const { return *m_inputs[resultPane]; }

    [[nodiscard]] SessionPaths paths() const;
    void setPaths(const SessionPaths &paths);
    [[nodiscard]] bool isEmpty() const;

    /// Shows the path of the result's file, and what its lines come from.
    void showResult(const QString &path);
    /// The one whose head or pane is at a place of the session; the left one for any other.
    [[nodiscard]] MergeSource sourceUnder(QPoint position) const;

    /// Takes up a changed theme.
    void refreshTheme();

Q_SIGNALS:
    void submitted();
    void encodingChosen();

private:
    void addInput(MergeSource source, const QString &name, const TextInput::Words &words);

    QWidget *m_session;
    std::array<QWidget *, mergePaneCount> m_heads{};
    std::array<TextInput *, mergePaneCount> m_inputs{};
    ElidedLabel *m_resultPath;
};

} // namespace velmora
