// What scripts may call on a document.

#include "document/Document.h"
#include "document/LayerChecks.h"

#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptException.h"

namespace {

QVariant userInfoOf(Document &document)
{
    const auto userInfo = document.userInfo();
    return userInfo ? QVariant(*userInfo) : QVariant::fromValue(nullptr);
}

QVariantList layersOf(Document &document)
{
    return scriptList(document.layers());
}

QVariantList allLayersOf(Document &document)
{
    return scriptList(document.allLayers());
}

QVariantList selectionOf(Document &document)
{
    return scriptList(document.selection());
}

void setSelectionOf(Document &document, const QVariantList &layers)
{
    QList<LayerPointer> selection;
    for (const auto &value : layers) {
        const auto layer = std::dynamic_pointer_cast<Layer>(value.value<ScriptObjectPointer>());
        if (!layer) {
            throw ScriptException(QStringLiteral("Argument 1 of setSelection has to hold layers only, but its element "
                                                 "%1 is none. Layers are what layers(), allLayers() and "
                                                 "layerWithID(id) answer.")
                                      .arg(selection.size()));
        }
        selection.append(layer);
    }
    document.setSelection(selection);
}

LayerPointer addLayerWithValues(Document &document, const QVariantMap &values)
{
    checkNewLayer(values);
    auto layer = std::make_shared<Layer>(values);
    document.addLayer(layer, nullptr);
    return layer;
}

LayerPointer insertLayerWithValues(Document &document, const QVariantMap &values, const LayerPointer &parent, int index)
{
    checkNewLayer(values);
    checkParent(parent);
    auto layer = std::make_shared<Layer>(values);
    if (!document.insertLayer(layer, parent, index))
        throw ScriptException(QStringLiteral("The group for the new layer is in no document or another one."));
    return layer;
}

QStringList layerTypes(Document &)
{
    return Layer::types();
}

QStringList styleKeys(Document &, const QString &type)
{
    return Layer::styleKeysOfType(type);
}

} // namespace

const ScriptClass &Document::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&Document::name>("name"),
        scriptOperation<&Document::setName>("setName", "(name)"),
        scriptOperation<&userInfoOf>("userInfo", "(): UserInfo | null"),
        scriptOperation<&layersOf>("layers", "(): Layer[]"),
        scriptOperation<&allLayersOf>("allLayers", "(): Layer[]"),
        scriptOperation<&Document::layerWithID>("layerWithID", "(id): Layer | null"),
        scriptOperation<&selectionOf>("selection", "(): Layer[]"),
        scriptOperation<&setSelectionOf>("setSelection", "(layers: readonly Layer[])"),
        scriptOperation<&addLayerWithValues>("addLayer", "(values: LayerValues): Layer"),
        scriptOperation<&insertLayerWithValues>(
            "insertLayer", "(values: LayerValues, parent: Layer | null, index): Layer"),
        scriptOperation<&layerTypes>("layerTypes"),
        scriptOperation<&styleKeys>("styleKeys", "(type)"),
    };
    static constexpr ScriptClass scriptClass{"Document", operations};
    return scriptClass;
}
