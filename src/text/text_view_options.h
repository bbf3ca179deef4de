#pragma once

#include "text/text_appearance.h"

#include <QObject>

namespace velmora {

class DiffView;
class LineDetail;
class TextCompareBar;

/// How the texts of a session are shown, remembered from one session to the next: text size, place of the splitter,
/// word wrap, syntax colours, blanks, line details, the context of differences, and whether unimportant differences
/// count.
///
/// A new session starts with what was chosen last in any; sessions that are open keep their own. Lives on the interface
/// thread.
class TextViewOptions final : public QObject {
    Q_OBJECT
public:
    /// Connects the bar's actions to the view. All outlive this object.
    TextViewOptions(TextCompareBar &bar, DiffView &view, LineDetail &detail, QObject *parent);

    /// Takes up another font or tab width, when one was chosen for all sessions since the last time.
    void takeAppearance();
    [[nodiscard]] int tabWidth() const noexcept { return m_appearance.tabWidth; }

    /// Counts unimportant differences as equal when they count, and the other way round.
    void toggleMinor();

private:
    void restore();
    void remember() const;

    TextCompareBar &m_bar;
    DiffView &m_view;
    LineDetail &m_detail;
    TextAppearance m_appearance;
};

} // namespace velmora
