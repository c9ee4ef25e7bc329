#include "platform/monitoring/KRFolderMonitor.h"

#include "platform/FileURL.h"
#include "platform/monitoring/FolderWatch.h"

std::unique_ptr<KRFolderMonitor> KRFolderMonitor::initWithURL(
    const QUrl &url, std::function<void()> contentsChangedBlock, const FolderMonitorOptions &options)
{
    // What other monitors have not read of yet happened before this one.
    FolderEvents::readPending();
    auto watch = FolderWatch::make(pathFromFileURL(url), options, FolderWatch::Place::Anywhere);
    if (!watch)
        return nullptr;
    watch->findPackages();
    return std::make_unique<KRFolderMonitor>(std::move(watch), std::move(contentsChangedBlock));
}

KRFolderMonitor::KRFolderMonitor(std::unique_ptr<FolderWatch> watch, std::function<void()> contentsChangedBlock)
    : m_watch(std::move(watch))
{
    m_watch->start(std::move(contentsChangedBlock));
}

KRFolderMonitor::~KRFolderMonitor() = default;
