#include "editing/LayerCommands.h"

#include "editing/LayerFrames.h"
#include "editing/LayerTexts.h"

#include <algorithm>

namespace {

const QList<LayerPointer> &siblingsOf(const Document &document, const LayerPointer &layer)
{
    const auto parent = layer->parent();
    return parent ? parent->layers() : document.layers();
}

qsizetype indexOf(const Document &document, const LayerPointer &layer)
{
    return siblingsOf(document, layer).indexOf(layer);
}

/// The selection's outermost layers in the document's order, bottom first.
QList<LayerPointer> orderedSelection(const Document &document)
{
    return orderedOutermostOf(document, document.selection());
}

QVariantMap usualValues(const QString &type, QPointF centre)
{
    const bool isText = type == u"text";
    const QSizeF size = isText ? QSizeF(160, 28) : QSizeF(120, type == u"image" ? 90 : 120);
    const QPointF corner(std::round(centre.x() - size.width() / 2), std::round(centre.y() - size.height() / 2));
    QVariantMap values{{QStringLiteral("type"), type}, {QStringLiteral("name"), typeTitle(type)},
        {QStringLiteral("frame"),
            QVariantMap{{QStringLiteral("x"), corner.x()}, {QStringLiteral("y"), corner.y()},
                {QStringLiteral("width"), size.width()}, {QStringLiteral("height"), size.height()}}}};
    if (isText) {
        values.insert(QStringLiteral("text"), LayerTexts::tr("Text"));
        values.insert(QStringLiteral("style"),
            QVariantMap{{QStringLiteral("fill"), QStringLiteral("#1C1C1E")}, {QStringLiteral("fontSize"), 18}});
    } else if (type != u"image") {
        values.insert(QStringLiteral("style"), QVariantMap{{QStringLiteral("fill"), QStringLiteral("#C9D3E8")}});
    }
    return values;
}

qsizetype stackedIndex(qsizetype index, qsizetype last, StackingStep step)
{
    switch (step) {
    case StackingStep::Forward:
        return std::min(index + 1, last);
    case StackingStep::Backward:
        return std::max<qsizetype>(index - 1, 0);
    case StackingStep::ToFront:
        return last;
    case StackingStep::ToBack:
        return 0;
    }
    return index;
}

} // namespace

QString typeTitle(const QString &type)
{
    if (type == u"rectangle")
        return LayerTexts::tr("Rectangle");
    if (type == u"oval")
        return LayerTexts::tr("Oval");
    if (type == u"text")
        return LayerTexts::tr("Text");
    if (type == u"image")
        return LayerTexts::tr("Image");
    return type == u"group" ? LayerTexts::tr("Group") : type;
}

void insertAboveSelection(Document &document, const QList<LayerPointer> &layers)
{
    const auto selected = orderedSelection(document);
    const auto parent = selected.isEmpty() ? nullptr : selected.last()->parent();
    auto index = selected.isEmpty() ? document.layers().size() : indexOf(document, selected.last()) + 1;
    for (const auto &layer : layers)
        document.insertLayer(layer, parent, index++);
}

LayerPointer insertLayer(Document &document, const QString &type, QPointF centre, const QVariantMap &keys)
{
    const DocumentHistory::Group step(document, LayerTexts::tr("Insert %1").arg(typeTitle(type)));
    auto values = usualValues(type, centre);
    values.insert(keys);
    const auto layer = std::make_shared<Layer>(values);
    insertAboveSelection(document, {layer});
    document.setSelection({layer});
    return layer;
}

void duplicateSelection(Document &document)
{
    const auto selected = orderedSelection(document);
    if (selected.isEmpty())
        return;
    constexpr QPointF offset(10, 10);
    const DocumentHistory::Group step(document, LayerTexts::tr("Duplicate"));
    QList<LayerPointer> copies;
    for (const auto &layer : selected)
        copies.append(document.duplicateLayer(layer));
    FrameSnapshot(copies).applyOffset(offset);
    document.setSelection(copies);
}

void removeSelection(Document &document)
{
    const auto selected = orderedSelection(document);
    if (selected.isEmpty())
        return;
    const DocumentHistory::Group step(document, LayerTexts::tr("Delete"));
    for (const auto &layer : selected)
        document.removeLayer(layer);
}

void groupSelection(Document &document)
{
    const auto selected = orderedSelection(document);
    if (selected.isEmpty())
        return;
    const DocumentHistory::Group step(document, LayerTexts::tr("Group"));
    const auto group = std::make_shared<Layer>(QVariantMap{{QStringLiteral("type"), QStringLiteral("group")},
        {QStringLiteral("name"), typeTitle(QStringLiteral("group"))}});
    setFrameOf(*group, boundsOf(selected));
    document.insertLayer(group, selected.last()->parent(), indexOf(document, selected.last()) + 1);
    for (const auto &layer : selected)
        document.moveLayer(layer, group, group->layers().size());
    document.setSelection({group});
}

void ungroupSelection(Document &document)
{
    auto selected = orderedSelection(document);
    selected.removeIf([](const LayerPointer &layer) { return layer->type() != u"group"; });
    if (selected.isEmpty())
        return;
    const DocumentHistory::Group step(document, LayerTexts::tr("Ungroup"));
    QList<LayerPointer> freed;
    for (const auto &group : std::as_const(selected)) {
        const auto layers = group->layers();
        auto index = indexOf(document, group);
        for (const auto &layer : layers)
            document.moveLayer(layer, group->parent(), ++index);
        document.removeLayer(group);
        freed += layers;
    }
    document.setSelection(freed);
}

void restackSelection(Document &document, StackingStep step)
{
    auto selected = orderedSelection(document);
    if (selected.isEmpty())
        return;
    const DocumentHistory::Group history(document, LayerTexts::tr("Arrange"));
    // Those that lead the way go first, so that they do not jump over each other; at an end they line up.
    if (step == StackingStep::Forward || step == StackingStep::ToBack)
        std::reverse(selected.begin(), selected.end());
    const LayerPointer *previous = nullptr;
    for (const auto &layer : std::as_const(selected)) {
        const auto &siblings = siblingsOf(document, layer);
        const auto to = stackedIndex(siblings.indexOf(layer), siblings.size() - 1, step);
        const bool isStep = step == StackingStep::Forward || step == StackingStep::Backward;
        const bool isBlocked = isStep && previous && siblings.value(to) == *previous;
        if (!isBlocked)
            document.moveLayer(layer, layer->parent(), to);
        previous = &layer;
    }
}

void selectAll(Document &document)
{
    document.setSelection(document.layers());
}

void moveSelection(Document &document, QPointF offset)
{
    const auto selected = document.selection();
    if (selected.isEmpty())
        return;
    const DocumentHistory::Group step(document, LayerTexts::tr("Move"));
    FrameSnapshot(selected).applyOffset(offset);
}
