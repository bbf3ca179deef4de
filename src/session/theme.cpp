#include "session/theme.h"

#include "session/fusion_style.h"

#include <QApplication>
#include <QFile>
#include <QIconEngine>
#include <QImageReader>
#include <QPainter>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <QStyleFactory>
#include <QWidget>

#include <cmath>

namespace velmora {

namespace {

constexpr char darkProperty[] = "appDarkTheme";
constexpr int menuIconSize = 20;

QPalette darkPalette()
{
    const QColor window(53, 53, 53);
    const QColor accent(42, 130, 218);
    const QColor disabled(127, 127, 127);
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    palette.setColor(QPalette::WindowText, Qt::white);
    palette.setColor(QPalette::Base, QColor(35, 35, 35));
    palette.setColor(QPalette::AlternateBase, window);
    palette.setColor(QPalette::ToolTipBase, window);
    palette.setColor(QPalette::ToolTipText, Qt::white);
    palette.setColor(QPalette::Text, Qt::white);
    palette.setColor(QPalette::Button, window);
    palette.setColor(QPalette::ButtonText, Qt::white);
    palette.setColor(QPalette::BrightText, Qt::red);
    palette.setColor(QPalette::Link, accent);
    palette.setColor(QPalette::Highlight, accent);
    palette.setColor(QPalette::HighlightedText, Qt::black);
    palette.setColor(QPalette::PlaceholderText, QColor(255, 255, 255, 150));
    // Edges and bevels, which would otherwise keep the light theme's near-white.
    palette.setColor(QPalette::Light, QColor(78, 78, 78));
    palette.setColor(QPalette::Midlight, QColor(66, 66, 66));
    palette.setColor(QPalette::Mid, QColor(44, 44, 44));
    palette.setColor(QPalette::Dark, QColor(32, 32, 32));
    palette.setColor(QPalette::Shadow, QColor(18, 18, 18));
    palette.setColor(QPalette::Disabled, QPalette::Text, disabled);
    palette.setColor(QPalette::Disabled, QPalette::ButtonText, disabled);
    return palette;
}

/// An icon that is faint where it cannot be used: what a style makes of a light picture stands out in the dark theme.
class FaintWhenDisabled final : public QIconEngine {
public:
    explicit FaintWhenDisabled(QIcon icon) : m_icon(std::move(icon)) {}

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        constexpr qreal faint = 0.35;
        painter->save();
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * faint);
        m_icon.paint(painter, rect, Qt::AlignCenter, mode == QIcon::Disabled ? QIcon::Normal : mode, state);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State state, qreal scale) override
    {
        if (mode != QIcon::Disabled)
            return m_icon.pixmap(size / scale, scale, mode, state);
        const QPixmap normal = m_icon.pixmap(size / scale, scale, QIcon::Normal, state);
        if (normal.isNull())
            return normal;
        QPixmap picture(normal.size());
        picture.setDevicePixelRatio(normal.devicePixelRatio());
        picture.fill(Qt::transparent);
        QPainter painter(&picture);
        paint(&painter, QRect(QPoint(), picture.size() / picture.devicePixelRatio()), mode, state);
        return picture;
    }

    QList<QSize> availableSizes(QIcon::Mode, QIcon::State state) override
    {
        return m_icon.availableSizes(QIcon::Normal, state);
    }
    bool isNull() override { return m_icon.isNull(); }
    [[nodiscard]] QIconEngine *clone() const override { return new FaintWhenDisabled(*this); }

private:
    QIcon m_icon;
};

} // namespace

void wearFusion()
{
    if (!qobject_cast<FusionStyle *>(QApplication::style()) && QStyleFactory::keys().contains(QLatin1String("Fusion")))
        QApplication::setStyle(new FusionStyle);
}

void applyTheme(bool dark)
{
    wearFusion();
    qApp->setProperty(darkProperty, dark);
    qApp->setStyleSheet(QString());
    const QPalette palette = dark ? darkPalette() : QApplication::style()->standardPalette();
    QApplication::setPalette(palette);
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *widget : widgets)
        widget->setPalette(palette);
}

bool isDarkTheme()
{
    return qApp && qApp->property(darkProperty).toBool();
}

QString themedIconPath(const QString &name)
{
    // The kinds of session and some callers know the whole resource path.
    QString bare = name.startsWith(QLatin1String(":/")) ? name.mid(2) : name;
    if (bare.startsWith(QLatin1String("icons/")))
        bare.remove(0, 6);
    const auto themed =
        QStringLiteral(":/icons/%1/%2").arg(isDarkTheme() ? QStringLiteral("dark") : QStringLiteral("light"), bare);
    if (QImageReader(themed).canRead())
        return themed;
    const auto plain = QStringLiteral(":/icons/%1").arg(bare);
    return QImageReader(plain).canRead() ? plain : themed;
}

QIcon themedIcon(const QString &name)
{
    // A file is added rather than a scaled picture, so that the icon engine picks the resolution of the screen; it
    // finds the pictures of whole factors ("@2x") itself, but not those drawn for the factors between.
    const QString path = themedIconPath(name);
    QIcon icon(path);
    for (const int pixels : {25, 30}) {
        QString between = path;
        between.replace(QLatin1String(".png"), QStringLiteral("-%1.png").arg(pixels));
        QPixmap picture;
        if (between == path || !QFile::exists(between) || !picture.load(between))
            continue;
        picture.setDevicePixelRatio(qreal(pixels) / menuIconSize);
        icon.addPixmap(picture);
    }
    return QIcon(new FaintWhenDisabled(icon));
}

QColor blended(const QColor &over, const QColor &under, double share)
{
    const auto mixed = [share](int a, int b) { return static_cast<int>(std::lround(a * share + b * (1.0 - share))); };
    return {mixed(over.red(), under.red()), mixed(over.green(), under.green()), mixed(over.blue(), under.blue())};
}

} // namespace velmora
