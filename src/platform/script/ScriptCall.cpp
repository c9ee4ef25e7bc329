#include "platform/script/ScriptCall.h"

#include "platform/script/ScriptDictionary.h"
#include "platform/script/ScriptException.h"

namespace {

bool isNil(const QVariant &value)
{
    return !value.isValid() || value.typeId() == QMetaType::Nullptr;
}

} // namespace

QVariantMap ScriptCall::dictionaryArgument(std::size_t index) const
{
    const auto value = variantArgument(index);
    if (!isNil(value) && value.typeId() != QMetaType::QVariantMap)
        rejectArgument(index, QStringLiteral("a plain object"));
    return value.toMap();
}

QVariantList ScriptCall::listArgument(std::size_t index) const
{
    const auto value = variantArgument(index);
    if (!isNil(value) && value.typeId() != QMetaType::QVariantList)
        rejectArgument(index, QStringLiteral("an array"));
    return value.toList();
}

ScriptObjectPointer ScriptCall::objectArgument(std::size_t index) const
{
    const auto value = variantArgument(index);
    if (!isNil(value) && value.metaType() != QMetaType::fromType<ScriptObjectPointer>())
        rejectArgument(index, QStringLiteral("an object of the application"));
    return value.value<ScriptObjectPointer>();
}

void ScriptCall::rejectArgument(std::size_t index, const QString &expected) const
{
    throw ScriptException(QStringLiteral("Argument %1 of %2 has to be %3.")
                              .arg(QString::number(index + 1), QString::fromLatin1(m_operation), expected));
}
