#include "app/window/plain_texts.h"

#include "session/plain_text.h"

#include <QApplication>
#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>
#include <QWindow>

namespace velmora {

namespace {

void showBareTitle(const QWidget &widget)
{
    QWindow *window = widget.isWindow() ? widget.windowHandle() : nullptr;
    if (!window || window->title().isEmpty())
        return;
    // The name is put there while the window system is told the title, and there is no switch for it.
    const QString name = QGuiApplication::applicationDisplayName();
    QGuiApplication::setApplicationDisplayName(QStringLiteral(""));
    window->setTitle(window->title());
    QGuiApplication::setApplicationDisplayName(name);
}

void showPlainly(QWidget &widget)
{
    auto *label = qobject_cast<QLabel *>(&widget);
    // The label of tool tips is one for all of them, and plainToolTip() escapes what it must.
    if (label && label->textFormat() == Qt::AutoText && !label->inherits("QTipLabel"))
        label->setTextFormat(Qt::PlainText);
}

/// True when the tool tip would have been rendered and has been shown instead.
bool showPlainTip(QWidget &widget, const QHelpEvent &event)
{
    const QString tip = plainToolTip(widget.toolTip());
    if (tip == widget.toolTip())
        return false;
    QToolTip::showText(event.globalPos(), tip, &widget, {}, widget.toolTipDuration());
    return true;
}

} // namespace

PlainTexts::PlainTexts(QObject *parent) : QObject(parent)
{
    qApp->installEventFilter(this);
}

bool PlainTexts::eventFilter(QObject *watched, QEvent *event)
{
    auto *widget = qobject_cast<QWidget *>(watched);
    if (!widget)
        return false;
    switch (event->type()) {
    case QEvent::Show:
    case QEvent::WindowTitleChange:
        showBareTitle(*widget);
        return false;
    case QEvent::Polish:
        showPlainly(*widget);
        return false;
    case QEvent::ToolTip:
        return showPlainTip(*widget, *static_cast<QHelpEvent *>(event));
    default:
        return false;
    }
}

} // namespace velmora
