#include "document/Layer.h"

#include "document/Document.h"
#include "document/LayerChecks.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptException.h"

#include <utility>

namespace {

const auto idKey = QStringLiteral("id");
const auto nameKey = QStringLiteral("name");
const auto typeKey = QStringLiteral("type");
const auto frameKey = QStringLiteral("frame");
const auto styleKey = QStringLiteral("style");
const auto textKey = QStringLiteral("text");
const auto imageKey = QStringLiteral("image");
const auto userInfoKey = QStringLiteral("userInfo");

std::optional<QVariantMap> dictionaryForKey(const QVariantMap &values, const QString &key)
{
    const auto value = values.value(key);
    return value.typeId() == QMetaType::QVariantMap ? std::optional(value.toMap()) : std::nullopt;
}

} // namespace

QVariantList scriptList(const QList<LayerPointer> &layers)
{
    QVariantList list;
    for (const auto &layer : layers)
        list.append(QVariant::fromValue(ScriptObjectPointer(layer)));
    return list;
}

Layer::Layer(const QVariantMap &values)
    : m_values(values)
{
    m_values.remove(QStringLiteral("layers"));
}

QString Layer::id() const
{
    return m_values.value(idKey).toString();
}

QString Layer::name() const
{
    return m_values.value(nameKey).toString();
}

void Layer::setName(const QString &name)
{
    setTextForKey(nameKey, name);
}

QString Layer::type() const
{
    return m_values.value(typeKey).toString();
}

QVariantMap Layer::frame() const
{
    QVariantMap frame;
    const auto stored = m_values.value(frameKey).toMap();
    for (const auto &key :
        {QStringLiteral("x"), QStringLiteral("y"), QStringLiteral("width"), QStringLiteral("height")})
        frame.insert(key, stored.value(key, 0));
    return frame;
}

void Layer::setFrame(const QVariantMap &frame)
{
    checkFrame(frame);
    auto changed = m_values.value(frameKey).toMap();
    changed.insert(frame);
    setDictionary(frameKey, changed);
}

QVariantMap Layer::style() const
{
    return m_values.value(styleKey).toMap();
}

void Layer::setStyle(const QVariantMap &style)
{
    checkStyle(style);
    setDictionary(styleKey, style);
}

QStringList Layer::types()
{
    return {QStringLiteral("group"), QStringLiteral("rectangle"), QStringLiteral("oval"), QStringLiteral("text"),
        QStringLiteral("image")};
}

QStringList Layer::styleKeysOfType(const QString &type)
{
    static const QStringList ofAll{QStringLiteral("opacity")};
    static const QStringList ofShapes{QStringLiteral("fill"), QStringLiteral("border"), QStringLiteral("borderWidth")};
    static const QStringList ofRectangles{QStringLiteral("cornerRadius")};
    static const QStringList ofTexts{QStringLiteral("fontFamily"), QStringLiteral("fontSize"),
        QStringLiteral("fontWeight"), QStringLiteral("textAlign")};
    if (type == u"group")
        return ofAll;
    const bool hasCorners = type == u"rectangle" || type == u"image";
    return ofAll + ofShapes + (hasCorners ? ofRectangles : QStringList()) + (type == u"text" ? ofTexts : QStringList());
}

std::optional<QString> Layer::text() const
{
    return textForKey(textKey);
}

void Layer::setText(const std::optional<QString> &text)
{
    setTextForKey(textKey, text);
}

std::optional<QString> Layer::image() const
{
    return textForKey(imageKey);
}

void Layer::setImage(const std::optional<QString> &image)
{
    setTextForKey(imageKey, image);
}

std::optional<QVariantMap> Layer::userInfo() const
{
    return dictionaryForKey(m_values, userInfoKey);
}

void Layer::setUserInfo(const std::optional<QVariantMap> &userInfo)
{
    if (userInfo && !userInfo->isEmpty())
        return setDictionary(userInfoKey, *userInfo);
    auto values = m_values;
    values.remove(userInfoKey);
    setValues(std::move(values));
}

std::optional<QString> Layer::textForKey(const QString &key) const
{
    const auto text = m_values.value(key);
    return text.typeId() == QMetaType::QString ? std::optional(text.toString()) : std::nullopt;
}

void Layer::setTextForKey(const QString &key, const std::optional<QString> &text)
{
    auto values = m_values;
    if (text)
        values.insert(key, *text);
    else
        values.remove(key);
    setValues(std::move(values));
}

void Layer::setDictionary(const QString &key, const QVariantMap &dictionary)
{
    auto values = m_values;
    values.insert(key, dictionary);
    setValues(std::move(values));
}

void Layer::setValues(QVariantMap values)
{
    if (values == m_values)
        return;
    const auto replaced = std::exchange(m_values, std::move(values));
    if (const auto owner = document())
        owner->layerChanged(std::static_pointer_cast<Layer>(shared_from_this()), replaced);
}

namespace {

// What scripts may call on a layer. Changes of the tree go through its document.

std::shared_ptr<Document> documentOf(const Layer &layer)
{
    auto document = layer.document();
    if (!document)
        throw ScriptException(QStringLiteral("The layer \"%1\" is in no document any more.").arg(layer.name()));
    return document;
}

LayerPointer pointerTo(Layer &layer)
{
    return std::static_pointer_cast<Layer>(layer.shared_from_this());
}

QVariant userInfoOf(Layer &layer)
{
    const auto userInfo = layer.userInfo();
    return userInfo ? QVariant(*userInfo) : QVariant::fromValue(nullptr);
}

QVariantList layersOf(Layer &layer)
{
    return scriptList(layer.layers());
}

LayerPointer addLayer(Layer &parent, const QVariantMap &values)
{
    checkNewLayer(values);
    checkParent(pointerTo(parent));
    auto layer = std::make_shared<Layer>(values);
    documentOf(parent)->addLayer(layer, pointerTo(parent));
    return layer;
}

void removeLayer(Layer &layer)
{
    documentOf(layer)->removeLayer(pointerTo(layer));
}

void moveToIndex(Layer &layer, int index)
{
    documentOf(layer)->moveLayer(pointerTo(layer), index);
}

void moveTo(Layer &layer, const LayerPointer &parent, int index)
{
    checkParent(parent, levelsOf(layer));
    const auto document = documentOf(layer);
    if (!document->moveLayer(pointerTo(layer), parent, index)) {
        throw ScriptException(QStringLiteral("The layer \"%1\" cannot be moved there: the place is inside it, or in no "
                                             "document or another one.")
                                  .arg(layer.name()));
    }
}

LayerPointer duplicate(Layer &layer)
{
    return documentOf(layer)->duplicateLayer(pointerTo(layer));
}

} // namespace

const ScriptClass &Layer::scriptClass() const
{
    static constexpr ScriptOperation operations[] = {
        scriptOperation<&Layer::id>("id"),
        scriptOperation<&Layer::name>("name"),
        scriptOperation<&Layer::setName>("setName", "(name)"),
        scriptOperation<&Layer::type>("type"),
        scriptOperation<&Layer::frame>("frame", "(): Frame"),
        scriptOperation<&Layer::setFrame>("setFrame", "(frame: Partial<Frame>)"),
        scriptOperation<&Layer::style>("style", "(): Style"),
        scriptOperation<&Layer::setStyle>("setStyle", "(style: Style)"),
        scriptOperation<&Layer::text>("text"),
        scriptOperation<&Layer::setText>("setText", "(text)"),
        scriptOperation<&Layer::image>("image"),
        scriptOperation<&Layer::setImage>("setImage", "(image)"),
        scriptOperation<&userInfoOf>("userInfo", "(): UserInfo | null"),
        scriptOperation<&Layer::parent>("parent", "(): Layer | null"),
        scriptOperation<&Layer::document>("document", "(): Document | null"),
        scriptOperation<&layersOf>("layers", "(): Layer[]"),
        scriptOperation<&addLayer>("addLayer", "(values: LayerValues): Layer"),
        scriptOperation<&removeLayer>("remove"),
        scriptOperation<&moveToIndex>("moveToIndex", "(index)"),
        scriptOperation<&moveTo>("moveTo", "(parent: Layer | null, index)"),
        scriptOperation<&duplicate>("duplicate", "(): Layer"),
    };
    static constexpr ScriptClass scriptClass{"Layer", operations};
    return scriptClass;
}
