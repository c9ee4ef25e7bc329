#include "platform/monitoring/KRFolderMonitor.h"

#include "platform/FileURL.h"
#include "platform/monitoring/FolderWatchHub.h"

std::unique_ptr<KRFolderMonitor> KRFolderMonitor::initWithURL(
    const QUrl &url, std::function<void()> contentsChangedBlock, const FolderMonitorOptions &options)
{
    const auto path = pathFromFileURL(url);
    const auto hub = path.isEmpty() || path.contains('\0') ? nullptr : FolderWatchHub::shared();
    auto watch = hub ? hub->watchOf(path, options) : nullptr;
    if (!watch)
        return nullptr;
    return std::unique_ptr<KRFolderMonitor>(
        new KRFolderMonitor(url, std::move(watch), std::move(contentsChangedBlock)));
}

KRFolderMonitor::KRFolderMonitor(const QUrl &url, std::shared_ptr<FolderWatch> watch, std::function<void()> block)
    : m_url(url)
    , m_watch(std::move(watch))
    , m_block(std::make_shared<std::function<void()>>(std::move(block)))
{
    m_watch->subscribe(m_block);
}

KRFolderMonitor::~KRFolderMonitor() = default;
