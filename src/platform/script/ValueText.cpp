#include "platform/script/ValueText.h"

#include "platform/JSONWriter.h"
#include "platform/script/ScriptClass.h"
#include "platform/script/ScriptDictionary.h"
#include "platform/script/ScriptValue.h"

#include <QDateTime>

#include <cmath>

namespace {

constexpr qsizetype longestText = 10'000'000;

enum class Nesting { Outermost, Inside };

QByteArray notation(const QVariant &value, Nesting nesting);

QByteArray notationOfNumber(double number)
{
    if (std::isnan(number))
        return "NaN";
    return number < 0 ? "-Infinity" : "Infinity";
}

QByteArray notationOfObject(const ScriptObjectPointer &object)
{
    return object ? '[' + QByteArray(object->scriptClass().name) + ']' : QByteArray("null");
}

/// The entries, but not those of a dictionary inside: it may be this very one again.
QByteArray notationOfDictionary(const ScriptDictionaryPointer &dictionary, Nesting nesting)
{
    if (!dictionary || nesting == Nesting::Inside)
        return "[Dictionary]";
    QVariantMap entries;
    const auto keys = dictionary->keys();
    for (const auto &key : keys)
        entries.insert(key, dictionary->value(key));
    return notation(entries, Nesting::Inside);
}

QByteArray notationOfOther(const QVariant &value, Nesting nesting)
{
    const auto type = value.metaType();
    if (!value.isValid())
        return "undefined";
    if (type == QMetaType::fromType<double>())
        return notationOfNumber(value.toDouble());
    if (type == QMetaType::fromType<QDateTime>())
        return value.toDateTime().toUTC().toString(Qt::ISODateWithMs).toUtf8();
    if (type == QMetaType::fromType<QByteArray>())
        return '<' + QByteArray::number(value.toByteArray().size()) + " bytes>";
    if (type == QMetaType::fromType<ScriptObjectPointer>())
        return notationOfObject(value.value<ScriptObjectPointer>());
    if (type == QMetaType::fromType<WeakScriptObjectPointer>())
        return notationOfObject(value.value<WeakScriptObjectPointer>().lock());
    if (type == QMetaType::fromType<ScriptDictionaryPointer>())
        return notationOfDictionary(value.value<ScriptDictionaryPointer>(), nesting);
    if (type == QMetaType::fromType<NativeFunction>())
        return "[Function]";
    if (type != QMetaType::fromType<ScriptValue>())
        return value.toString().toUtf8();
    const auto scriptValue = value.value<ScriptValue>();
    return scriptValue.kind() == ScriptValue::Kind::Data ? notation(scriptValue.toVariant(), Nesting::Inside)
                                                         : scriptValue.description().toUtf8();
}

QByteArray notation(const QVariant &value, Nesting nesting)
{
    JSONWriter writer({JSONStyle::Compact, " ",
        [nesting](const QVariant &other) { return notationOfOther(other, nesting); }, longestText});
    writer.write(value);
    return writer.take();
}

} // namespace

QString descriptionOfValue(const QVariant &value)
{
    if (!value.isValid() || value.typeId() == QMetaType::Nullptr)
        return QStringLiteral("(null)");
    auto text = value.typeId() == QMetaType::QString ? value.toString()
                                                     : QString::fromUtf8(notation(value, Nesting::Outermost));
    if (text.size() > longestText)
        text = text.left(longestText) + u'…';
    return text;
}
