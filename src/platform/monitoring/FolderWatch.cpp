#include "platform/monitoring/FolderWatch.h"

#include "platform/FileURL.h"
#include "platform/FolderListing.h"

#include <algorithm>
#include <cerrno>
#include <utility>

FolderNumbers::~FolderNumbers() = default;

FolderWatch::FolderWatch(
    std::shared_ptr<FolderNumbers> numbers, const QByteArray &path, const FolderMonitorOptions &options)
    : m_numbers(std::move(numbers))
    , m_path(path)
    , m_options(options)
{ }

FolderWatch::~FolderWatch()
{
    disarm();
    m_numbers->noteEnd(*this);
}

bool FolderWatch::arm()
{
    int error = 0;
    if (armFolder(&error))
        return true;
    if (error != ENOENT || !armAncestor())
        return false;
    // It may have come in between.
    const auto ancestor = m_number;
    if (armFolder(&error) && ancestor != m_number)
        m_numbers->forget(*ancestor, *this);
    return true;
}

bool FolderWatch::armFolder(int *error)
{
    const auto number = m_numbers->watch(m_path, *this, Role::Folder, error);
    if (!number)
        return false;
    m_number = number;
    m_isFolderThere = true;
    return true;
}

bool FolderWatch::armAncestor()
{
    m_isFolderThere = false;
    for (auto ancestor = m_path; ancestor != "/";) {
        ancestor = pathWithoutLastComponent(ancestor);
        if (ancestor.isEmpty())
            ancestor = "/";
        m_number = m_numbers->watch(ancestor, *this, Role::Ancestor);
        if (m_number)
            return true;
    }
    return false;
}

void FolderWatch::disarm()
{
    for (const auto &[folder, number] : m_packageFolders)
        m_numbers->forget(number, *this);
    m_packageFolders.clear();
    if (m_number)
        m_numbers->forget(*m_number, *this);
    m_number.reset();
}

bool FolderWatch::verify()
{
    const bool isSame = m_isFolderThere && m_number && m_numbers->numberOf(m_path) == m_number;
    if (isSame)
        return true;
    disarm();
    if (!arm())
        return false;
    addPackages();
    return true;
}

void FolderWatch::rearm()
{
    disarm();
    if (arm())
        addPackages();
    changed();
}

void FolderWatch::addPackages()
{
    if (m_options.packageExtension.isEmpty() || !m_isFolderThere)
        return;
    const auto entries = visibleEntries(m_path);
    for (const auto &entry : entries) {
        if (entry.kind == FolderEntry::Kind::Folder || entry.kind == FolderEntry::Kind::Link)
            addPackageEntry(entry.name);
    }
}

void FolderWatch::addPackageEntry(const QByteArray &name)
{
    if (m_options.packageExtension.isEmpty() || name.startsWith('.'))
        return;
    const auto target = targetOfEntry(pathByAppending(m_path, name));
    if (hasExtension(target, m_options.packageExtension) && kindOfTarget(target) == FolderEntry::Kind::Folder)
        addPackage(target);
}

void FolderWatch::addPackage(const QByteArray &package)
{
    if (!m_packageFolders.contains(package))
        addTree(package);
}

void FolderWatch::addTree(const QByteArray &folder)
{
    std::vector<QByteArray> pending{folder};
    while (!pending.empty()) {
        const auto next = std::move(pending.back());
        pending.pop_back();
        const auto number = m_numbers->watch(next, *this, Role::Package);
        if (!number)
            continue;
        m_packageFolders.insert_or_assign(next, *number);
        const auto entries = visibleEntries(next);
        for (const auto &entry : entries) {
            if (entry.kind == FolderEntry::Kind::Folder && isLookedInto(entry.name))
                pending.push_back(pathByAppending(next, entry.name));
        }
    }
}

void FolderWatch::removeTree(const QByteArray &folder)
{
    const auto remove = [this](auto place) {
        m_numbers->forget(place->second, *this);
        return m_packageFolders.erase(place);
    };
    if (const auto root = m_packageFolders.find(folder); root != m_packageFolders.end())
        remove(root);
    const auto prefix = folder + '/';
    for (auto place = m_packageFolders.lower_bound(prefix);
         place != m_packageFolders.end() && place->first.startsWith(prefix);)
        place = remove(place);
}

bool FolderWatch::isLookedInto(const QByteArray &name) const
{
    return !name.startsWith('.') && !m_options.ignoredNames.contains(withoutExtension(name));
}

void FolderWatch::subscribe(const void *subscriber, const std::shared_ptr<const Callback> &callback)
{
    m_subscriptions.push_back({subscriber, callback});
}

void FolderWatch::unsubscribe(const void *subscriber)
{
    std::erase_if(m_subscriptions, [subscriber](const auto &each) { return each.subscriber == subscriber; });
}

std::vector<const void *> FolderWatch::subscribers() const
{
    std::vector<const void *> subscribers;
    for (const auto &each : m_subscriptions)
        subscribers.push_back(each.subscriber);
    return subscribers;
}

std::shared_ptr<const FolderWatch::Callback> FolderWatch::callbackOf(const void *subscriber) const
{
    const auto found = std::find_if(m_subscriptions.begin(), m_subscriptions.end(),
        [subscriber](const auto &each) { return each.subscriber == subscriber; });
    return found == m_subscriptions.end() ? nullptr : found->callback;
}

void FolderWatch::changed()
{
    m_numbers->noteChange(weak_from_this());
    m_hasChanged = true;
}

void FolderWatch::handle(Role role, const QByteArray &folder, const Inotify::Event &event)
{
    switch (role) {
    case Role::Folder:
        handleInFolder(event);
        break;
    case Role::Package:
        handleInPackage(folder, event);
        break;
    case Role::Ancestor:
        handleInAncestor(folder, event);
        break;
    }
}

void FolderWatch::handleInFolder(const Inotify::Event &event)
{
    if (event.isAboutTheEnd()) {
        rearm();
        return;
    }
    if (event.isAboutContent())
        return; // of a file that is no plug-in's
    if (event.isDeparture())
        removeTree(pathByAppending(m_path, event.name));
    if (event.isArrival())
        addPackageEntry(event.name);
    changed();
}

void FolderWatch::handleInPackage(const QByteArray &folder, const Inotify::Event &event)
{
    changed();
    if (event.isAboutTheEnd()) {
        removeTree(folder);
        return;
    }
    const auto path = pathByAppending(folder, event.name);
    if (event.isDeparture())
        removeTree(path);
    if (event.isArrival() && isLookedInto(event.name) && targetOfEntry(path) == path
        && kindOfTarget(path) == FolderEntry::Kind::Folder)
        addTree(path);
}

void FolderWatch::handleInAncestor(const QByteArray &ancestor, const Inotify::Event &event)
{
    const auto prefix = ancestor == "/" ? ancestor : ancestor + '/';
    const auto awaited = m_path.sliced(prefix.size()).split('/').first();
    const bool concernsUs = event.isAboutTheEnd() || (event.isArrival() && event.name == awaited);
    if (!concernsUs)
        return;
    disarm();
    if (!arm() || !m_isFolderThere)
        return;
    addPackages();
    changed();
}
