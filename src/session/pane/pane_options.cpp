#include "session/pane/pane_options.h"

#include "core/settings_store.h"
#include "session/pane/pane_view.h"
#include "session/pane/text_bar.h"

namespace velmora {

namespace {

// Under "textView" in the store of the sessions.
QString keyOf(QLatin1String name)
{
    return QLatin1String("textView/") + name;
}

constexpr QLatin1String pointsKey("fontPoints");

struct Switch {
    QAction *TextBar::*action;
    QLatin1String key;
    bool usual;
};
constexpr Switch switches[] = {{&TextBar::wrapLines, QLatin1String("wrapLines"), false},
                               {&TextBar::syntaxColours, QLatin1String("syntaxColours"), true},
                               {&TextBar::showBlanks, QLatin1String("showBlanks"), false}};

} // namespace

PaneOptions::PaneOptions(TextBar &bar, PaneView &view, QObject *parent) : QObject(parent), m_bar(bar), m_view(view)
{
    connect(bar.wrapLines, &QAction::toggled, &view.scene(), &PaneScene::setWraps);
    connect(bar.syntaxColours, &QAction::toggled, &view.scene(), &PaneScene::setShowsSyntax);
    connect(bar.showBlanks, &QAction::toggled, &view.scene(), &PaneScene::setShowsBlanks);
    connect(bar.zoomIn, &QAction::triggered, &view, [this] { m_view.zoomBy(1); });
    connect(bar.zoomOut, &QAction::triggered, &view, [this] { m_view.zoomBy(-1); });
    connect(bar.resetZoom, &QAction::triggered, &view, &PaneView::resetZoom);
    restore();
    for (const Switch &one : switches)
        connect(bar.*one.action, &QAction::toggled, this, &PaneOptions::remember);
    connect(&view, &PaneView::fontSizeChanged, this, &PaneOptions::remember);
}

void PaneOptions::takeAppearance()
{
    const TextAppearance chosen = TextAppearance::load();
    if (chosen == m_appearance)
        return;
    m_view.setUsualFont(chosen.family, chosen.points);
    if (chosen.points != m_appearance.points)
        m_view.resetZoom();
    m_appearance = chosen;
    PaneScene &scene = m_view.scene();
    if (scene.document() && scene.document()->tabWidth() != chosen.tabWidth)
        scene.replaceDocument(scene.document()->withTabWidth(chosen.tabWidth));
}

void PaneOptions::restore()
{
    m_appearance = TextAppearance::load();
    m_view.setUsualFont(m_appearance.family, m_appearance.points);
    m_view.resetZoom();
    const SessionSettings settings;
    for (const Switch &one : switches)
        (m_bar.*one.action)->setChecked(settings.value(keyOf(one.key), one.usual).toBool());
    m_view.setFontPointSize(settings.value(keyOf(pointsKey), m_view.fontPointSize()).toDouble());
}

void PaneOptions::remember() const
{
    SessionSettings settings;
    for (const Switch &one : switches)
        settings.setValue(keyOf(one.key), (m_bar.*one.action)->isChecked());
    settings.setValue(keyOf(pointsKey), m_view.fontPointSize());
}

} // namespace velmora
