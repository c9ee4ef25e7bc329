#include "plugins/HostLog.h"

HostLog::HostLog()
    : m_action(std::make_shared<LogCollector>([this](const QVariantMap &entry, const QString &sender) {
        m_action->takeEntries(); // who wants them later keeps them
        emit logged(entry, sender);
    }))
{ }

HostLog::~HostLog() = default;
