#pragma once

#include "platform/ItemMove.h"
#include "platform/Trash.h"

#include <memory>
#include <optional>

/// An installed plug-in on its way out of its place, until it is certain that another takes it. Ends with the move
/// either finished or taken back.
class SettingAside
{
public:
    explicit SettingAside(const QByteArray &bundle);

    /// Nil when the bundle is at the path, where nothing may be.
    std::optional<KRError> moveTo(const QByteArray &path);
    /// Nil when the bundle is in the trash.
    std::optional<KRError> moveToTrash();
    /// Nil when the bundle is at its place, be it that it has never left it.
    std::optional<KRError> takeBack();

private:
    QByteArray m_bundle;
    std::unique_ptr<ItemMove> m_move;
    std::optional<TrashedItem> m_trashed;
};
