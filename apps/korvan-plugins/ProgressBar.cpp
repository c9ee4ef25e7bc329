#include "ProgressBar.h"

#include <cstdio>
#include <unistd.h>

namespace {

/// A terminal that has to show more lines than this is slower than what it tells of.
constexpr std::chrono::milliseconds betweenLines(50);

void rewriteLine(const QString &text)
{
    const auto line = "\r" + text.toUtf8() + "\033[K";
    std::fputs(line.constData(), stderr);
}

} // namespace

QString progressText(qint64 done, qint64 whole, int width)
{
    if (whole <= 0)
        return {};
    const auto filled = int(qBound(qint64(0), done, whole) * width / whole);
    return QString(filled, u'=') + QString(width - filled, u' ');
}

ProgressBar::ProgressBar(Display display)
    : m_isShown(display == Display::OnTerminal && ::isatty(STDERR_FILENO))
{ }

ProgressBar::~ProgressBar()
{
    if (m_isShown)
        rewriteLine({});
}

void ProgressBar::show(const QString &what, qint64 done, qint64 whole)
{
    if (!m_isShown)
        return;
    const std::lock_guard lock(m_mutex);
    const auto now = std::chrono::steady_clock::now();
    if (now < m_nextLine && done != whole)
        return;
    m_nextLine = now + betweenLines;
    constexpr int width = 30;
    const auto bar = progressText(done, whole, width);
    rewriteLine(bar.isEmpty() ? what : QStringLiteral("[%1] %2").arg(bar, what));
}
