#pragma once

#include <QDesktopServices>
#include <QList>
#include <QObject>
#include <QUrl>

/// Stands for the system's programs: remembers what they would have been given to open.
class UrlRecorder : public QObject
{
    Q_OBJECT

public:
    explicit UrlRecorder(const QStringList &schemes)
        : m_schemes(schemes)
    {
        for (const auto &scheme : m_schemes)
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~UrlRecorder() override
    {
        for (const auto &scheme : m_schemes)
            QDesktopServices::unsetUrlHandler(scheme);
    }

    QList<QUrl> urls;

public slots:
    void open(const QUrl &url) { urls.append(url); }

private:
    QStringList m_schemes;
};
