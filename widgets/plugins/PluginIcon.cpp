#include "widgets/plugins/PluginIcon.h"

#include "bundles/KRPluginBundle.h"
#include "platform/LTAppEnvironment.h"
#include "widgets/Symbols.h"

#include <QGuiApplication>
#include <QPainter>

namespace {

constexpr int points = 64;

/// A quiet tile; its hue is the plug-in's own, so that several can be told apart.
QPixmap drawnIcon(const QString &identifier, qreal ratio)
{
    QPixmap pixmap(QSize(points, points) * ratio);
    pixmap.setDevicePixelRatio(ratio);
    pixmap.fill(Qt::transparent);
    constexpr int hues = 360;
    const int hue = int(qHash(identifier, 0) % hues);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor::fromHsl(hue, 90, 150));
    painter.drawRoundedRect(QRectF(2, 2, points - 4, points - 4), 14, 14);
    painter.setPen(Qt::white);
    drawSymbol(painter, Symbol::Plugin, QRectF(12, 12, 40, 40));
    return pixmap;
}

} // namespace

QIcon pluginIcon(const KRPluginBundle &bundle)
{
    const auto ratio = qGuiApp->devicePixelRatio();
    const bool hasPicture = !bundle.icon().isNull()
        || !LTAppEnvironment::current().imageNamed(QStringLiteral("img-plugin-thumbnail-alert-112")).isNull();
    return hasPicture ? QIcon(QPixmap::fromImage(bundle.alertIcon(ratio)))
                      : QIcon(drawnIcon(bundle.identifier().value_or(QString()), ratio));
}
