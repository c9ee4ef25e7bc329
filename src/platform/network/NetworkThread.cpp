#include "platform/network/NetworkThread.h"

#include "platform/network/TransferPool.h"

#include <condition_variable>
#include <csignal>

namespace {

/// Stops the thread when static objects are destroyed, whoever still holds it.
struct SharedNetworkThread
{
    ~SharedNetworkThread() { thread->stop(); }

    std::shared_ptr<NetworkThread> thread = std::make_shared<NetworkThread>();
};

/// Opens when it is destroyed: after a command has run, or without.
class Gate
{
public:
    struct State
    {
        std::mutex mutex;
        std::condition_variable opened;
        bool isOpen = false;
    };

    explicit Gate(std::shared_ptr<State> state)
        : m_state(std::move(state))
    { }
    ~Gate()
    {
        const std::lock_guard lock(m_state->mutex);
        m_state->isOpen = true;
        m_state->opened.notify_all();
    }
    Gate(const Gate &) = delete;
    Gate &operator=(const Gate &) = delete;

private:
    std::shared_ptr<State> m_state;
};

/// A server that hangs up while something is sent to it must not end the process.
void blockBrokenPipeSignal()
{
    sigset_t brokenPipe;
    sigemptyset(&brokenPipe);
    sigaddset(&brokenPipe, SIGPIPE);
    pthread_sigmask(SIG_BLOCK, &brokenPipe, nullptr);
}

/// What the transfer library registers to be run at the process's end comes after this library's own end, as it is
/// registered before. It is not cleaned up by hand: a lookup of a name that was given up may still use it.
void initialiseTransferLibrary()
{
    curl_global_init(CURL_GLOBAL_DEFAULT);
}

} // namespace

std::shared_ptr<NetworkThread> NetworkThread::shared()
{
    static const SharedNetworkThread instance;
    return instance.thread;
}

NetworkThread::NetworkThread()
{
    initialiseTransferLibrary();
    m_transfers = std::make_unique<TransferPool>(m_stopping);
    m_thread = std::thread([this] { run(); });
    m_threadID = m_thread.get_id(); // read on the thread by commands only, which come later
}

NetworkThread::~NetworkThread()
{
    stop();
}

void NetworkThread::stop()
{
    {
        const std::lock_guard lock(m_mutex);
        m_stopping = true;
    }
    m_transfers->wake();
    if (m_thread.joinable())
        m_thread.join();
}

bool NetworkThread::isCurrentThread() const
{
    return std::this_thread::get_id() == m_threadID;
}

void NetworkThread::post(std::function<void()> command)
{
    {
        const std::lock_guard lock(m_mutex);
        if (m_stopping)
            return;
        m_commands.push_back(std::move(command));
    }
    m_transfers->wake();
}

void NetworkThread::postAndWait(std::function<void()> command)
{
    const auto state = std::make_shared<Gate::State>();
    post([command = std::move(command), gate = std::make_shared<Gate>(state)] { command(); });
    std::unique_lock lock(state->mutex);
    state->opened.wait(lock, [&state] { return state->isOpen; });
}

void NetworkThread::run()
{
    blockBrokenPipeSignal();
    while (!m_stopping) {
        runCommands();
        m_transfers->advance();
        m_transfers->wait();
    }
    m_transfers->clear();
    takeCommands(); // what they hold is destroyed without the lock: it may post, in vain
}

void NetworkThread::runCommands()
{
    for (std::function<void()> &command : takeCommands()) {
        if (m_stopping)
            return;
        command();
        command = nullptr; // whoever waits for its end waits for it alone
    }
}

std::vector<std::function<void()>> NetworkThread::takeCommands()
{
    const std::lock_guard lock(m_mutex);
    return std::exchange(m_commands, {});
}
