#include "platform/monitoring/FoldersAbove.h"

#include "platform/FileURL.h"

#include <sys/inotify.h>

namespace {

constexpr quint32 endOfPath = IN_MOVE_SELF | IN_DELETE_SELF | IN_UNMOUNT | IN_IGNORED;

/// From the folder up to the root.
template <typename Visit>
void visitUpwards(QByteArray folder, const Visit &visit)
{
    visit(folder);
    while (folder != "/") {
        folder = pathWithoutLastComponent(folder);
        visit(folder);
    }
}

} // namespace

class FoldersAbove::Folder final : public FolderEventReceiver
{
public:
    Folder(FolderEvents &events, const QByteArray &path)
        : m_events(events)
        , m_path(path)
    { }
    ~Folder() { m_events.release(m_watch, *this); }
    Folder(const Folder &) = delete;
    Folder &operator=(const Folder &) = delete;

    void add(Listener &listener)
    {
        m_listeners.insert(&listener);
        if (m_isElsewhere || m_watch < 0)
            watchAnew();
    }
    void remove(Listener &listener) { m_listeners.erase(&listener); }
    bool isNeeded() const { return !m_listeners.empty(); }

    void folderEvent(const InotifyEvent &event) override
    {
        if (!(event.mask & endOfPath))
            return;
        m_isElsewhere = true;
        for (auto *listener : m_listeners)
            listener->folderAboveMoved();
    }
    /// The listeners hear of this themselves.
    void eventsLost() override { m_isElsewhere = true; }

private:
    /// Another folder may be at the path now.
    void watchAnew()
    {
        const int watch = m_events.hold(m_path, IN_MOVE_SELF | IN_DELETE_SELF, *this).watch;
        if (watch != m_watch)
            m_events.release(m_watch, *this);
        m_watch = watch;
        m_isElsewhere = false;
    }

    FolderEvents &m_events;
    QByteArray m_path;
    std::unordered_set<Listener *> m_listeners;
    int m_watch = -1;
    bool m_isElsewhere = false;
};

FoldersAbove::FoldersAbove(FolderEvents &events)
    : m_events(events)
{ }

FoldersAbove::~FoldersAbove() = default;

std::shared_ptr<FoldersAbove> FoldersAbove::shared(FolderEvents &events)
{
    static std::weak_ptr<FoldersAbove> foldersAbove;
    auto current = foldersAbove.lock();
    if (!current)
        foldersAbove = current = std::make_shared<FoldersAbove>(events);
    return current;
}

void FoldersAbove::hold(const QByteArray &folder, Listener &listener)
{
    visitUpwards(folder, [&](const QByteArray &path) {
        auto &held = m_folders[path];
        if (!held)
            held = std::make_unique<Folder>(m_events, path);
        held->add(listener);
    });
}

void FoldersAbove::release(const QByteArray &folder, Listener &listener)
{
    visitUpwards(folder, [&](const QByteArray &path) {
        const auto found = m_folders.find(path);
        if (found == m_folders.end())
            return;
        found->second->remove(listener);
        if (!found->second->isNeeded())
            m_folders.erase(found);
    });
}
