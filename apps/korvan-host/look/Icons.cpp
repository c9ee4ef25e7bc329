#include "look/Icons.h"

#include <QGuiApplication>
#include <QIconEngine>
#include <QPainter>
#include <QPalette>

static void initializeResources()
{
    Q_INIT_RESOURCE(korvan_host_icons); // a static library's resources are not found otherwise
}

namespace {

QString iconPath(const QString &name)
{
    static const bool isInitialized = (initializeResources(), true);
    Q_UNUSED(isInitialized);
    return QStringLiteral(":/korvan-host/icons/%1.svg").arg(name);
}

QColor colourFor(QIcon::Mode mode)
{
    const auto palette = QGuiApplication::palette();
    if (mode == QIcon::Selected)
        return palette.color(QPalette::Active, QPalette::HighlightedText);
    const auto group = mode == QIcon::Disabled ? QPalette::Disabled : QPalette::Active;
    return palette.color(group, QPalette::WindowText);
}

/// Draws the picture's shape in the palette's colour: one picture serves light and dark.
class LineIconEngine final : public QIconEngine
{
public:
    explicit LineIconEngine(const QString &name)
        : m_name(name)
        , m_picture(iconPath(name))
    { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const double ratio = painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, scaledPixmap(rect.size() * ratio, mode, state, ratio));
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        return scaledPixmap(size, mode, state, 1);
    }

    QPixmap scaledPixmap(const QSize &size, QIcon::Mode mode, QIcon::State, double scale) override
    {
        auto pixmap = m_picture.pixmap(size, 1.0);
        QPainter painter(&pixmap);
        painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
        painter.fillRect(pixmap.rect(), colourFor(mode));
        painter.end();
        pixmap.setDevicePixelRatio(scale);
        return pixmap;
    }

    QIconEngine *clone() const override { return new LineIconEngine(m_name); }

private:
    QString m_name;
    QIcon m_picture;
};

} // namespace

QIcon lineIcon(const QString &name)
{
    return QIcon(new LineIconEngine(name));
}

QIcon layerIcon(const QString &type)
{
    static const QStringList known{
        QStringLiteral("group"), QStringLiteral("oval"), QStringLiteral("text"), QStringLiteral("image")};
    return lineIcon(QStringLiteral("layer-") + (known.contains(type) ? type : QStringLiteral("rectangle")));
}

QIcon programIcon()
{
    return QIcon(iconPath(QStringLiteral("korvan-host")));
}
