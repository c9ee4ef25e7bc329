#include "platform/monitoring/KRFolderMonitor.h"

#include "platform/FileURL.h"
#include "platform/monitoring/FolderWatchHub.h"

std::unique_ptr<KRFolderMonitor> KRFolderMonitor::initWithURL(
    const QUrl &url, std::function<void()> contentsChangedBlock, const FolderMonitorOptions &options)
{
    const auto block = std::make_shared<const std::function<void()>>(std::move(contentsChangedBlock));
    return initWithPath(pathFromFileURL(url), block, options);
}

std::unique_ptr<KRFolderMonitor> KRFolderMonitor::initWithPath(const QByteArray &path,
    const std::shared_ptr<const std::function<void()>> &contentsChangedBlock, const FolderMonitorOptions &options)
{
    const auto hub = path.isEmpty() || path.contains('\0') ? nullptr : FolderWatchHub::shared();
    auto watch = hub ? hub->watchOf(path, options) : nullptr;
    if (!watch)
        return nullptr;
    std::unique_ptr<KRFolderMonitor> monitor(new KRFolderMonitor(std::move(watch)));
    monitor->m_watch->subscribe(monitor.get(), contentsChangedBlock);
    return monitor;
}

KRFolderMonitor::KRFolderMonitor(std::shared_ptr<FolderWatch> watch)
    : m_watch(std::move(watch))
{ }

KRFolderMonitor::~KRFolderMonitor()
{
    m_watch->unsubscribe(this);
}

QUrl KRFolderMonitor::url() const
{
    return fileURLFromPath(m_watch->path(), FileKind::Folder);
}
