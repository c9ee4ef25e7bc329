#include "updates/SettingAside.h"

SettingAside::SettingAside(const QByteArray &bundle)
    : m_bundle(bundle)
{ }

std::optional<KRError> SettingAside::moveTo(const QByteArray &path)
{
    auto move = std::make_unique<ItemMove>(m_bundle, path);
    auto failure = move->prepare();
    if (!failure)
        failure = move->carryOut();
    if (!failure)
        m_move = std::move(move);
    return failure;
}

std::optional<KRError> SettingAside::moveToTrash()
{
    KRError error;
    m_trashed = ::moveToTrash(m_bundle, &error);
    return m_trashed ? std::nullopt : std::optional(error);
}

std::optional<KRError> SettingAside::takeBack()
{
    if (m_trashed)
        return takeOutOfTrash(*m_trashed);
    return m_move ? m_move->takeBack() : std::nullopt;
}
