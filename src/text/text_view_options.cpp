#include "text/text_view_options.h"

#include "core/settings_store.h"
#include "text/text_compare_bar.h"
#include "text/view/diff_view.h"
#include "text/view/line_detail.h"
#include "text/view/merge_splitter.h"

#include <QActionGroup>

namespace velmora {

namespace {

// Under "textView" in the store of the sessions.
QString keyOf(QLatin1String name)
{
    return QLatin1String("textView/") + name;
}

constexpr QLatin1String leftShareKey("leftShare");
constexpr QLatin1String contextKey("contextLines");

struct Switch {
    QAction *TextCompareBar::*action;
    QLatin1String key;
    bool usual;
};
constexpr Switch switches[] = {{&TextCompareBar::lineDetail, QLatin1String("lineDetails"), false},
                               {&TextCompareBar::ignoreMinor, QLatin1String("ignoreMinor"), true}};

} // namespace

TextViewOptions::TextViewOptions(TextCompareBar &bar, DiffView &view, LineDetail &detail, QObject *parent)
    : QObject(parent), m_bar(bar), m_view(view), m_detail(detail), m_panes(bar, view, this)
{
    connect(bar.lineDetail, &QAction::toggled, &detail, &QWidget::setVisible);
    connect(bar.ignoreMinor, &QAction::toggled, this,
            [this](bool ignores) { m_view.scene().setCountsMinor(!ignores); });
    connect(bar.contextLines, &QActionGroup::triggered, this,
            [this](const QAction *action) { m_view.scene().setContextRows(action->data().toInt()); });
    restore();
    for (const Switch &one : switches)
        connect(bar.*one.action, &QAction::toggled, this, &TextViewOptions::remember);
    connect(bar.contextLines, &QActionGroup::triggered, this, &TextViewOptions::remember);
    connect(&view, &DiffView::fontSizeChanged, this, &TextViewOptions::remember);
    connect(&view.splitter(), &QSplitter::splitterMoved, this, &TextViewOptions::remember);
}

void TextViewOptions::toggleMinor()
{
    m_bar.ignoreMinor->toggle();
}

void TextViewOptions::restore()
{
    m_detail.hide();
    const SessionSettings settings;
    for (const Switch &one : switches)
        (m_bar.*one.action)->setChecked(settings.value(keyOf(one.key), one.usual).toBool());
    const int context = settings.value(keyOf(contextKey), int(ShownRows::usualContext)).toInt();
    m_view.scene().setContextRows(std::clamp(context, 0, 1000));
    m_bar.showContextLines(int(m_view.scene().layout().context()));
    m_view.setLeftShare(settings.value(keyOf(leftShareKey), 0.5).toDouble());
}

void TextViewOptions::remember() const
{
    SessionSettings settings;
    for (const Switch &one : switches)
        settings.setValue(keyOf(one.key), (m_bar.*one.action)->isChecked());
    settings.setValue(keyOf(contextKey), int(m_view.scene().layout().context()));
    settings.setValue(keyOf(leftShareKey), m_view.leftShare());
}

} // namespace velmora
