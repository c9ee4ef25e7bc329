#pragma once

#include "platform/Export.h"
#include "platform/Result.h"
#include "platform/script/ScriptObject.h"

#include <QList>
#include <QString>

#include <functional>
#include <memory>
#include <optional>

/// Something that a plug-in offers to put into layers.
struct DataSupplier
{
    enum class Kind { Text, Image };

    QString pluginIdentifier;
    /// Tells the suppliers of a plug-in apart.
    QString identifier;
    /// For the user.
    QString name;
    Kind kind = Kind::Text;

    friend bool operator==(const DataSupplier &, const DataSupplier &) = default;
};

/// What running plug-ins offer to put into layers. Main thread only.
class KORVAN_EXPORT DataSuppliers
{
public:
    /// For each layer a text, or an image's path or URL; nil for a layer that gets none.
    using Values = QList<std::optional<QString>>;
    /// Called once, later or at once.
    using Answer = std::function<void(const Result<Values> &values)>;
    using Layers = QList<ScriptObjectPointer>;
    using Supply = std::function<void(const Layers &layers, const Answer &answer)>;

    DataSuppliers();
    ~DataSuppliers();
    DataSuppliers(const DataSuppliers &) = delete;
    DataSuppliers &operator=(const DataSuppliers &) = delete;

    /// In the order in which they were registered.
    QList<DataSupplier> suppliers() const;
    /// Asks for values for the layers, which come later. An error where the supplier has gone, or fails; the plug-in's
    /// command has it in its log then.
    void supply(const DataSupplier &supplier, const Layers &layers, const Answer &answer) const;

    /// Registers a supplier until what this answers is gone.
    [[nodiscard]] std::shared_ptr<void> add(const DataSupplier &supplier, Supply supply);

private:
    struct Registry;

    std::shared_ptr<Registry> m_registry;
};
