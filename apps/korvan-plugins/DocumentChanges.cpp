#include "DocumentChanges.h"

namespace {

QString sizeText(const Layer &layer)
{
    const auto frame = layer.frame();
    const auto number = [&frame](const char *key) {
        return QString::number(frame.value(QLatin1String(key)).toDouble(), 'g', 6);
    };
    return QStringLiteral("%1×%2 at %3,%4").arg(number("width"), number("height"), number("x"), number("y"));
}

QString layerText(const Layer &layer)
{
    auto text = QStringLiteral("%1 (%2, %3)").arg(layer.name(), layer.type(), sizeText(layer));
    if (const auto content = layer.text(); content && !content->isEmpty())
        text += QStringLiteral(" “%1”").arg(*content);
    return text;
}

void addOutline(const QList<LayerPointer> &layers, int depth, QStringList &lines)
{
    for (const auto &layer : layers) {
        lines.append(QString(depth * 2, u' ') + layerText(*layer));
        addOutline(layer->layers(), depth + 1, lines);
    }
}

QStringList order(const Document &document)
{
    QStringList names;
    for (const auto &layer : document.layers())
        names.append(layer->name());
    return names;
}

} // namespace

DocumentChanges::DocumentChanges(const Document &before)
    : m_order(order(before))
{
    const auto layers = before.allLayers();
    for (const auto &layer : layers)
        m_before.insert(layer->id(), layerText(*layer));
}

QStringList DocumentChanges::since(const Document &after) const
{
    QStringList lines;
    auto gone = m_before;
    const auto layers = after.allLayers();
    for (const auto &layer : layers) {
        const auto text = layerText(*layer);
        const auto before = gone.take(layer->id());
        if (before.isNull())
            lines.append(QStringLiteral("+ ") + text);
        else if (before != text)
            lines.append(QStringLiteral("~ %1 → %2").arg(before, text));
    }
    for (const auto &text : gone)
        lines.append(QStringLiteral("- ") + text);
    if (lines.isEmpty() && order(after) != m_order)
        lines.append(QStringLiteral("~ in the order: ") + order(after).join(QStringLiteral(", ")));
    return lines;
}

QStringList outlineOf(const Document &document)
{
    QStringList lines;
    addOutline(document.layers(), 0, lines);
    return lines;
}
