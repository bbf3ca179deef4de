#pragma once

#include "core/sides.h"
#include "session/pane/pane_scene.h"

#include <QSplitter>

namespace velmora {

/// The splitter between two panes, whose handle shows for each difference in sight an arrow to either side: a click
/// copies the difference there, a drag elsewhere moves the handle.
class MergeSplitter final : public QSplitter {
    Q_OBJECT
public:
    /// `scene` outlives the splitter.
    explicit MergeSplitter(PaneScene &scene, QWidget *parent = nullptr);

    /// Whether copying to `side` is possible at all.
    void setCopyable(Side side, bool possible);
    [[nodiscard]] bool isCopyable(Side side) const { return m_copyable[side]; }

Q_SIGNALS:
    /// The difference that holds `row` is to be copied from side `from` to the other.
    void copyWanted(velmora::Side from, qsizetype row);

protected:
    QSplitterHandle *createHandle() override;

private:
    PaneScene &m_scene;
    Sides<bool> m_copyable{true, true};
};

} // namespace velmora
