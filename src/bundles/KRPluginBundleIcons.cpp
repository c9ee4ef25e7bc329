// The pictures that a bundle offers.

#include "bundles/KRPluginBundle.h"

#include "bundles/AlertIcon.h"
#include "platform/LTAppEnvironment.h"

QImage KRPluginBundle::icon() const
{
    return m_iconInfo ? m_iconInfo->image() : QImage();
}

QImage KRPluginBundle::alertIcon(qreal devicePixelRatio) const
{
    const auto own = icon();
    return alertIconOf(
        own.isNull() ? LTAppEnvironment::current().imageNamed(QStringLiteral("img-plugin-thumbnail-alert-112")) : own,
        devicePixelRatio);
}
