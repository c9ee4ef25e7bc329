#include "manager/MonitoredWalk.h"

#include "platform/monitoring/FolderWatchHub.h"

MonitoredWalk::MonitoredWalk(const FolderMonitorOptions &options)
    : m_options(options)
    , m_hub(FolderWatchHub::shared())
{
    if (!m_hub)
        return;
    m_hub->beginSilence();
    m_hub->readEvents(); // what is known before the walk is no news after it
}

MonitoredWalk::~MonitoredWalk()
{
    if (m_hub)
        m_hub->endSilence();
}

void MonitoredWalk::willVisit(const QByteArray &folder)
{
    if (!m_hub)
        return;
    if (auto watch = m_hub->watchFrom(folder, m_options, FolderWatchHub::Packages::AddedByCaller))
        m_watches.push_back(std::move(watch));
}

void MonitoredWalk::didFindBundle(const QByteArray &bundle, const QByteArray &inFolder)
{
    if (const auto watch = m_hub ? m_hub->existing(inFolder, m_options) : nullptr)
        watch->addPackage(bundle);
}
