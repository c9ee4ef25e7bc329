#include "canvas/LayerAppearance.h"

#include "document/Layer.h"
#include "editing/LayerFrames.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double usualFontSize = 14;
constexpr double largestFontSize = 10000;

std::optional<double> numberIn(const QVariantMap &style, const QString &key)
{
    const auto value = style.value(key);
    if (!value.isValid() || value.typeId() == QMetaType::QString || !value.canConvert<double>())
        return std::nullopt;
    const auto number = value.toDouble();
    return std::isfinite(number) ? std::optional(number) : std::nullopt;
}

LayerAppearance::Shape shapeOf(const QString &type)
{
    using Shape = LayerAppearance::Shape;
    if (type == u"group")
        return Shape::None;
    if (type == u"oval")
        return Shape::Oval;
    if (type == u"text")
        return Shape::Text;
    return type == u"image" ? Shape::Image : Shape::Rectangle;
}

int weightIn(const QVariantMap &style)
{
    const auto weight = style.value(QStringLiteral("fontWeight"));
    if (weight.toString() == u"bold")
        return QFont::Bold;
    const auto number = numberIn(style, QStringLiteral("fontWeight"));
    return number ? std::clamp(int(*number), 1, 1000) : int(QFont::Normal);
}

QFont fontIn(const QVariantMap &style)
{
    QFont font;
    if (const auto family = style.value(QStringLiteral("fontFamily")).toString(); !family.isEmpty())
        font.setFamilies({family});
    const auto size = numberIn(style, QStringLiteral("fontSize")).value_or(usualFontSize);
    font.setPixelSize(int(std::clamp(std::round(size), 1.0, largestFontSize)));
    font.setWeight(QFont::Weight(weightIn(style)));
    font.setHintingPreference(QFont::PreferNoHinting); // else a text's width would change with the zoom
    return font;
}

Qt::Alignment alignmentIn(const QVariantMap &style)
{
    const auto alignment = style.value(QStringLiteral("textAlign")).toString();
    if (alignment == u"center")
        return Qt::AlignHCenter;
    return alignment == u"right" ? Qt::AlignRight : Qt::AlignLeft;
}

void readText(const Layer &layer, const QVariantMap &style, LayerAppearance &appearance)
{
    appearance.text = layer.text().value_or(QString());
    appearance.font = fontIn(style);
    appearance.alignment = alignmentIn(style);
    if (!appearance.fill.isValid())
        appearance.fill = QColor(0x1C, 0x1C, 0x1E);
}

} // namespace

LayerAppearance appearanceOf(const Layer &layer)
{
    const auto style = layer.style();
    LayerAppearance appearance;
    appearance.shape = shapeOf(layer.type());
    appearance.frame = frameOf(layer).normalized();
    appearance.opacity = std::clamp(numberIn(style, QStringLiteral("opacity")).value_or(1), 0.0, 1.0);
    if (appearance.shape == LayerAppearance::Shape::None)
        return appearance;
    appearance.fill = colourFromText(style.value(QStringLiteral("fill")).toString());
    appearance.border = colourFromText(style.value(QStringLiteral("border")).toString());
    if (appearance.border.isValid())
        appearance.borderWidth = std::max(0.0, numberIn(style, QStringLiteral("borderWidth")).value_or(1));
    appearance.cornerRadius = std::max(0.0, numberIn(style, QStringLiteral("cornerRadius")).value_or(0));
    if (appearance.shape == LayerAppearance::Shape::Text)
        readText(layer, style, appearance);
    else if (appearance.shape == LayerAppearance::Shape::Image)
        appearance.image = layer.image().value_or(QString());
    else if (!appearance.fill.isValid() && !appearance.border.isValid())
        appearance.fill = QColor(0xD8, 0xD8, 0xDC);
    return appearance;
}

QColor colourFromText(const QString &text)
{
    if (!text.startsWith(u'#'))
        return text.isEmpty() ? QColor() : QColor(text);
    if (text.size() == 9) // Qt has the opacity in front
        return QColor(u'#' + text.mid(7) + text.mid(1, 6));
    return text.size() == 4 || text.size() == 7 ? QColor(text) : QColor();
}

QString textFromColour(const QColor &colour)
{
    const auto rgb = colour.name(QColor::HexRgb).toUpper();
    if (colour.alpha() == 255)
        return rgb;
    return rgb + QStringLiteral("%1").arg(colour.alpha(), 2, 16, QLatin1Char('0')).toUpper();
}
