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

bool storedFlag(QLatin1String name, bool usual)
{
    return SessionSettings().value(keyOf(name), usual).toBool();
}

constexpr QLatin1String pointsKey("fontPoints");
constexpr QLatin1String leftShareKey("leftShare");
constexpr QLatin1String wrapKey("wrapLines");
constexpr QLatin1String syntaxKey("syntaxColours");
constexpr QLatin1String blanksKey("showBlanks");
constexpr QLatin1String detailKey("lineDetails");
constexpr QLatin1String ignoreMinorKey("ignoreMinor");
constexpr QLatin1String contextKey("contextLines");

} // namespace

TextViewOptions::TextViewOptions(TextCompareBar &bar, DiffView &view, LineDetail &detail, QObject *parent)
    : QObject(parent), m_bar(bar), m_view(view), m_detail(detail)
{
    connect(bar.wrapLines, &QAction::toggled, &view.scene(), &DiffScene::setWraps);
    connect(bar.syntaxColours, &QAction::toggled, &view.scene(), &DiffScene::setShowsSyntax);
    connect(bar.showBlanks, &QAction::toggled, &view.scene(), &DiffScene::setShowsBlanks);
    connect(bar.lineDetail, &QAction::toggled, &detail, &QWidget::setVisible);
    connect(bar.ignoreMinor, &QAction::toggled, this,
            [this](bool ignores) { m_view.scene().setCountsMinor(!ignores); });
    connect(bar.contextLines, &QActionGroup::triggered, this,
            [this](const QAction *action) { m_view.scene().setContextRows(action->data().toInt()); });
    connect(bar.zoomIn, &QAction::triggered, &view, [this] { m_view.zoomBy(1); });
    connect(bar.zoomOut, &QAction::triggered, &view, [this] { m_view.zoomBy(-1); });
    connect(bar.resetZoom, &QAction::triggered, &view, &DiffView::resetZoom);
    restore();
    for (const QAction *action : {bar.wrapLines, bar.syntaxColours, bar.showBlanks, bar.lineDetail, bar.ignoreMinor})
        connect(action, &QAction::toggled, this, &TextViewOptions::remember);
    connect(bar.contextLines, &QActionGroup::triggered, this, &TextViewOptions::remember);
    connect(&view, &DiffView::fontSizeChanged, this, &TextViewOptions::remember);
    connect(&view.splitter(), &QSplitter::splitterMoved, this, &TextViewOptions::remember);
}

void TextViewOptions::toggleMinor()
{
    m_bar.ignoreMinor->toggle();
}

void TextViewOptions::takeAppearance()
{
    const TextAppearance chosen = TextAppearance::load();
    if (chosen == m_appearance)
        return;
    m_view.setUsualFont(chosen.family, chosen.points);
    if (chosen.points != m_appearance.points)
        m_view.resetZoom();
    m_appearance = chosen;
    DiffScene &scene = m_view.scene();
    if (scene.document() && scene.document()->tabWidth() != chosen.tabWidth)
        scene.replaceDocument(std::make_shared<DiffDocument>(*scene.document(), chosen.tabWidth));
}

void TextViewOptions::restore()
{
    m_appearance = TextAppearance::load();
    m_view.setUsualFont(m_appearance.family, m_appearance.points);
    m_view.resetZoom();
    m_detail.hide();
    m_bar.wrapLines->setChecked(storedFlag(wrapKey, false));
    m_bar.syntaxColours->setChecked(storedFlag(syntaxKey, true));
    m_bar.showBlanks->setChecked(storedFlag(blanksKey, false));
    m_bar.lineDetail->setChecked(storedFlag(detailKey, false));
    m_bar.ignoreMinor->setChecked(storedFlag(ignoreMinorKey, true));
    const SessionSettings settings;
    const int context = settings.value(keyOf(contextKey), int(ShownRows::usualContext)).toInt();
    m_view.scene().setContextRows(std::clamp(context, 0, 1000));
    m_bar.showContextLines(int(m_view.scene().layout().context()));
    m_view.setFontPointSize(settings.value(keyOf(pointsKey), m_view.fontPointSize()).toDouble());
    m_view.setLeftShare(settings.value(keyOf(leftShareKey), 0.5).toDouble());
}

void TextViewOptions::remember() const
{
    SessionSettings settings;
    settings.setValue(keyOf(wrapKey), m_bar.wrapLines->isChecked());
    settings.setValue(keyOf(syntaxKey), m_bar.syntaxColours->isChecked());
    settings.setValue(keyOf(blanksKey), m_bar.showBlanks->isChecked());
    settings.setValue(keyOf(detailKey), m_bar.lineDetail->isChecked());
    settings.setValue(keyOf(ignoreMinorKey), m_bar.ignoreMinor->isChecked());
    settings.setValue(keyOf(contextKey), int(m_view.scene().layout().context()));
    settings.setValue(keyOf(pointsKey), m_view.fontPointSize());
    settings.setValue(keyOf(leftShareKey), m_view.leftShare());
}

} // namespace velmora
