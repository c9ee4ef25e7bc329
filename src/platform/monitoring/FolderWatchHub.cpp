#include "platform/monitoring/FolderWatchHub.h"

#include "platform/LTAppEnvironment.h"
#include "platform/MainQueue.h"

#include <algorithm>
#include <iterator>
#include <utility>

std::shared_ptr<FolderWatchHub> FolderWatchHub::shared()
{
    static std::weak_ptr<FolderWatchHub> current;
    if (auto hub = current.lock())
        return hub;
    auto hub = std::make_shared<FolderWatchHub>();
    current = hub;
    return hub->isOpen() ? hub : nullptr;
}

FolderWatchHub::FolderWatchHub()
{
    if (!isOpen())
        return;
    m_notifier = std::make_unique<QSocketNotifier>(m_inotify.descriptor(), QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(), [this] { readEvents(); });
}

FolderWatchHub::~FolderWatchHub() = default;

std::shared_ptr<FolderWatch> FolderWatchHub::existing(const QByteArray &path, const FolderMonitorOptions &options)
{
    const auto [begin, end] = m_watches.equal_range(path);
    for (auto candidate = begin; candidate != end; ++candidate) {
        if (auto watch = candidate->second.lock(); watch && watch->options() == options)
            return watch;
    }
    return nullptr;
}

std::shared_ptr<FolderWatch> FolderWatchHub::makeWatch(
    const QByteArray &path, const FolderMonitorOptions &options, Packages packages)
{
    auto watch = std::make_shared<FolderWatch>(shared_from_this(), path, options);
    if (!watch->arm())
        return nullptr;
    if (packages == Packages::Search)
        watch->addPackages();
    m_watches.emplace(path, watch);
    return watch;
}

std::shared_ptr<FolderWatch> FolderWatchHub::watchFrom(
    const QByteArray &path, const FolderMonitorOptions &options, Packages packages)
{
    auto watch = existing(path, options);
    if (!watch)
        return makeWatch(path, options, packages);
    if (!watch->verify())
        return nullptr;
    watch->markUnchanged();
    return watch;
}

std::shared_ptr<FolderWatch> FolderWatchHub::watchOf(const QByteArray &path, const FolderMonitorOptions &options)
{
    auto watch = existing(path, options);
    return watch ? watch : makeWatch(path, options, Packages::Search);
}

std::optional<int> FolderWatchHub::watch(const QByteArray &folder, FolderWatch &owner, WatchedRole role, int *error)
{
    const auto number = m_inotify.add(folder, error);
    if (number)
        m_places.emplace(*number, Place{&owner, role, folder});
    return number;
}

void FolderWatchHub::forget(int number, const FolderWatch &owner)
{
    auto [place, end] = m_places.equal_range(number);
    if (place == end)
        return;
    while (place != end)
        place = place->second.owner == &owner ? m_places.erase(place) : std::next(place);
    if (!m_places.contains(number))
        m_inotify.remove(number);
}

void FolderWatchHub::noteChange(const std::weak_ptr<FolderWatch> &watch)
{
    m_hasNews = true;
    if (const auto changed = watch.lock(); changed && !changed->hasChanged())
        m_changed.push_back(watch);
}

void FolderWatchHub::noteEnd(const FolderWatch &watch)
{
    auto [candidate, end] = m_watches.equal_range(watch.path());
    while (candidate != end)
        candidate = candidate->second.expired() ? m_watches.erase(candidate) : std::next(candidate);
}

void FolderWatchHub::readEvents()
{
    const auto kept = shared_from_this();
    const auto events = m_inotify.takeEvents();
    for (const auto &event : events)
        handle(event);
    if (std::exchange(m_hasNews, false))
        scheduleTelling();
}

void FolderWatchHub::handle(const Inotify::Event &event)
{
    if (event.hasLostChanges()) {
        rearmEverything();
        return;
    }
    // None for a folder that is not watched any more. Copied: they may change what is watched.
    std::vector<Place> places;
    const auto [begin, end] = m_places.equal_range(event.number);
    for (auto place = begin; place != end; ++place)
        places.push_back(place->second);
    if (event.isDropped())
        m_places.erase(event.number);
    for (const auto &place : places)
        place.owner->handle(place.role, place.folder, event);
}

void FolderWatchHub::rearmEverything()
{
    std::vector<std::shared_ptr<FolderWatch>> watches;
    for (const auto &[path, candidate] : m_watches) {
        if (auto watch = candidate.lock())
            watches.push_back(std::move(watch));
    }
    for (const auto &watch : watches)
        watch->rearm();
}

void FolderWatchHub::scheduleTelling()
{
    if (m_changed.empty() || m_silences > 0)
        return;
    auto &queue = LTAppEnvironment::current().mainQueue();
    const auto now = queue.now();
    if (!m_firstChange)
        m_firstChange = now;
    const auto due = std::min(now + quietTime, *m_firstChange + longestDelay);
    m_telling = queue.callAfter(due - now, [this] { tell(); });
}

void FolderWatchHub::tell()
{
    const auto kept = shared_from_this();
    m_telling.reset();
    if (m_silences > 0)
        return; // comes again when it ends
    m_firstChange.reset();
    std::vector<std::pair<std::weak_ptr<FolderWatch>, const void *>> calls;
    for (const auto &candidate : std::exchange(m_changed, {})) {
        const auto watch = candidate.lock();
        if (!watch || !watch->hasChanged())
            continue;
        watch->markUnchanged();
        for (const auto *const subscriber : watch->subscribers())
            calls.emplace_back(candidate, subscriber);
    }
    for (const auto &[candidate, subscriber] : calls) {
        // Whoever was called before may have ended this one.
        const auto watch = candidate.lock();
        if (const auto callback = watch ? watch->callbackOf(subscriber) : nullptr)
            (*callback)();
    }
}

void FolderWatchHub::endSilence()
{
    --m_silences;
    scheduleTelling();
}
