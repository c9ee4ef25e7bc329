#pragma once

#include "PluginsFixture.h"
#include "widgets/plugins/PluginUpdatesController.h"
#include "widgets/plugins/PluginsWindow.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QListView>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QtTest>

/// A window for plug-ins, used with mouse and keyboard.
class PluginsWindowFixture : protected PluginsFixture
{
protected:
    void setUpWindow()
    {
        setUp();
        m_window = std::make_unique<PluginsWindow>(*m_manager);
    }
    void tearDownWindow()
    {
        QThreadPool::globalInstance()->waitForDone();
        m_window.reset();
        tearDown();
    }
    void show() const
    {
        m_window->show();
        m_window->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(m_window.get()));
    }
    template <class Widget>
    Widget *find(const QString &name) const
    {
        auto *const widget = m_window->findChild<Widget *>(name);
        if (!widget)
            qFatal("there is no %s", qPrintable(name));
        return widget;
    }
    QListView *list() const { return find<QListView>(QStringLiteral("PluginList")); }
    QString label(const QString &name) const { return find<QLabel>(name)->text(); }
    void click(const QString &button) const { QTest::mouseClick(find<QPushButton>(button), Qt::LeftButton); }
    QString notice() const
    {
        auto *const banner = find<QWidget>(QStringLiteral("NoticeBanner"));
        return banner->isVisible() ? banner->findChild<QLabel *>(QStringLiteral("BannerText"))->text() : QString();
    }
    void waitForNotice() const
    {
        waitUntil([this] { return !notice().isEmpty(); });
    }
    QMessageBox *question() const { return m_window->findChild<QMessageBox *>(); }
    void answer(QMessageBox::ButtonRole role) const
    {
        auto *const box = question();
        QVERIFY(box && box->isVisible());
        for (auto *const button : box->buttons()) {
            if (box->buttonRole(button) == role)
                QTest::mouseClick(button, Qt::LeftButton);
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
    /// Over the window, and in it if that is accepted.
    void drop(const QList<QUrl> &urls, bool isAccepted) const
    {
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QCoreApplication::sendEvent(m_window.get(), &enter);
        QCOMPARE(enter.isAccepted(), isAccepted);
        if (!isAccepted)
            return;
        QDropEvent dropped({10, 10}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(m_window.get(), &dropped);
    }
    void check() const
    {
        click(QStringLiteral("CheckButton"));
        waitUntil([this] { return !m_window->updates().isChecking(); });
    }

    std::unique_ptr<PluginsWindow> m_window;
};
