#include "session/theme.h"

#include <QApplication>
#include <QFile>
#include <QImageReader>
#include <QPalette>
#include <QPixmap>
#include <QStyle>
#include <QStyleFactory>

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

} // namespace

void applyTheme(bool dark)
{
    if (QStyleFactory::keys().contains(QLatin1String("Fusion")))
        QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
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
    return icon;
}

QColor blended(const QColor &over, const QColor &under, double share)
{
    const auto mixed = [share](int a, int b) { return static_cast<int>(std::lround(a * share + b * (1.0 - share))); };
    return {mixed(over.red(), under.red()), mixed(over.green(), under.green()), mixed(over.blue(), under.blue())};
}

} // namespace velmora
