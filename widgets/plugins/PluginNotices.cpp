#include "widgets/plugins/PluginNotices.h"

#include "localization/Localizable.h"
#include "widgets/plugins/Banner.h"

#include <QVBoxLayout>

PluginNotices::PluginNotices(QWidget *parent)
    : QWidget(parent)
    , m_incompatible(new Banner(Tone::Warning, Banner::Dismissal::Offered))
    , m_allDisabled(new Banner(Tone::Accent, Banner::Dismissal::NotOffered))
    , m_notice(new Banner(Tone::Accent, Banner::Dismissal::Offered))
{
    m_incompatible->setObjectName(QStringLiteral("IncompatibleBanner"));
    m_allDisabled->setObjectName(QStringLiteral("AllDisabledBanner"));
    m_notice->setObjectName(QStringLiteral("NoticeBanner"));
    m_allDisabled->setAction(Localizable::tr("Enable A&gain"));
    connect(m_allDisabled, &Banner::actionRequested, this, &PluginNotices::enableAgainRequested);
    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    for (auto *const banner : {m_incompatible, m_allDisabled, m_notice})
        layout->addWidget(banner);
}

void PluginNotices::say(const QString &text, Tone tone)
{
    m_notice->say(text, tone);
}

void PluginNotices::showIncompatibleCount(qint64 count)
{
    m_incompatible->say(
        Localizable::tr("Plug-ins that were disabled because they do not work with this application: %1").arg(count));
}

void PluginNotices::showAllDisabled(bool areAllDisabled)
{
    if (areAllDisabled)
        m_allDisabled->say(
            Localizable::tr("All plug-ins are disabled. Enabling one of them leaves the others disabled for good."));
    else
        m_allDisabled->hide();
}
