#include "session/fusion_style.h"

#include "session/theme.h"

#include <QDialogButtonBox>
#include <QPainter>
#include <QStyleFactory>
#include <QStyleOption>

namespace velmora {

namespace {

bool isIndicator(QStyle::PrimitiveElement element)
{
    return element == QStyle::PE_IndicatorCheckBox || element == QStyle::PE_IndicatorRadioButton ||
           element == QStyle::PE_IndicatorItemViewItemCheck;
}

} // namespace

FusionStyle::FusionStyle() : QProxyStyle(QStyleFactory::create(QStringLiteral("Fusion")))
{
    setObjectName(QStringLiteral("fusion"));
}

void FusionStyle::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                                const QWidget *widget) const
{
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    const auto *item = qstyleoption_cast<const QStyleOptionViewItem *>(option);
    if (!isDarkTheme() || !isIndicator(element) || (!button && !item)) {
        QProxyStyle::drawPrimitive(element, option, painter, widget);
        return;
    }
    const auto drawFramed = [&](auto framed) {
        framed.palette.setColor(QPalette::Window, framed.palette.color(QPalette::Text));
        QProxyStyle::drawPrimitive(element, &framed, painter, widget);
    };
    if (button)
        drawFramed(*button);
    else
        drawFramed(*item);
}

int FusionStyle::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                           QStyleHintReturn *data) const
{
    switch (hint) {
    case SH_DialogButtonLayout:
        return QDialogButtonBox::WinLayout;
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return false;
    default:
        return QProxyStyle::styleHint(hint, option, widget, data);
    }
}

} // namespace velmora
