#pragma once

#include "HostApplication.h"
#include "SampleDocument.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QDropEvent>
#include <QFile>
#include <QFileInfo>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMimeData>
#include <QTemporaryDir>
#include <QTimer>
#include <QtTest>

#include <memory>

/// Writes a file and the folders on the way to it. A failure fails the program: no test makes sense without its files.
inline void writeFile(const QString &path, const QByteArray &content)
{
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// A button of the next dialog that is shown is pressed; what the dialog says is kept.
class DialogAnswer
{
public:
    enum class Times { Once, Always };

    explicit DialogAnswer(const QString &button, Times times = Times::Once)
        : m_times(times)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, button] { press(button); });
        m_timer.start(0);
    }

    bool wasShown() const { return m_wasShown; }
    const QString &text() const { return m_text; }

private:
    void press(const QString &text)
    {
        auto *const dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
        if (!dialog || !dialog->isVisible())
            return;
        const auto buttons = dialog->findChildren<QAbstractButton *>();
        for (auto *const button : buttons) {
            if (button->text().remove(u'&') != text)
                continue;
            if (m_times == Times::Once)
                m_timer.stop();
            m_wasShown = true;
            if (const auto *const box = qobject_cast<QMessageBox *>(dialog))
                m_text = box->text() + u'\n' + box->informativeText();
            QTest::mouseClick(button, Qt::LeftButton);
            return;
        }
    }

    Times m_times;
    QTimer m_timer;
    bool m_wasShown = false;
    QString m_text;
};

/// The program in a folder that is everything the user has.
class HostFixture
{
protected:
    void makeFolder()
    {
        m_host.reset();
        m_folder = std::make_unique<QTemporaryDir>();
        qputenv("XDG_DATA_HOME", QFile::encodeName(path(QStringLiteral("data")))); // where the trash is
        QDir().mkpath(path(QStringLiteral("data")));
        m_options = {};
        m_options.folders = QStringList{path(QStringLiteral("plugins"))};
        m_options.supportFolder = path(QStringLiteral("support"));
        m_options.defaultsFile = path(QStringLiteral("defaults.ini"));
        m_options.resourcesFolder = QStringLiteral(KORVAN_RESOURCES_FOLDER);
        writeFile(path(QStringLiteral("sample.json")), sampleDocument);
        m_options.files = {path(QStringLiteral("sample.json"))};
    }
    void removeFolder()
    {
        m_host.reset();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
        m_folder.reset();
    }

    QString path(const QString &relative) const { return m_folder->filePath(relative); }

    /// A plug-in "com.example.NAME" with the commands of the manifest's array and one script "script.js".
    void plugin(const QString &name, const QByteArray &commands, const QByteArray &script) const
    {
        const auto folder = path(QStringLiteral("plugins/%1.korvanplugin/Contents/Korvan/").arg(name));
        writeFile(folder + QStringLiteral("manifest.json"),
            R"({"name": ")" + name.toUtf8() + R"(", "identifier": "com.example.)" + name.toUtf8()
                + R"(", "version": "1.0", "commands": [)" + commands + "]}");
        writeFile(folder + QStringLiteral("script.js"), script);
    }

    DocumentWindow &start()
    {
        m_host = std::make_unique<HostApplication>(m_options);
        auto *const log = m_host->plugins().log().get();
        QObject::connect(log, &ConsoleLog::logged, log, [this](const LogEntry &entry) { m_log.append(entry.text); });
        m_log.clear();
        m_host->start();
        return window();
    }

    DocumentWindow &window() const { return *m_host->windows().last(); }
    LayerPointer layer(const QString &id) const { return window().document()->layerWithID(id); }

    /// A place of the document in the canvas's viewport.
    static QPoint place(DocumentWindow &window, double x, double y) { return window.canvas().mapFromScene(x, y); }
    static void click(DocumentWindow &window, double x, double y, Qt::KeyboardModifiers modifiers = {})
    {
        QTest::mouseClick(window.canvas().viewport(), Qt::LeftButton, modifiers, place(window, x, y));
    }
    static void drag(DocumentWindow &window, QPointF from, QPointF to, Qt::KeyboardModifiers modifiers = {},
        Qt::MouseButton button = Qt::LeftButton)
    {
        auto *const viewport = window.canvas().viewport();
        const auto start = place(window, from.x(), from.y());
        const auto end = place(window, to.x(), to.y());
        QTest::mousePress(viewport, button, modifiers, start);
        moveMouse(*viewport, (start + end) / 2, modifiers, button);
        moveMouse(*viewport, end, modifiers, button);
        QTest::mouseRelease(viewport, button, modifiers, end);
    }
    /// QTest::mouseMove() has no modifiers.
    static void moveMouse(QWidget &viewport, QPoint to, Qt::KeyboardModifiers modifiers, Qt::MouseButton button)
    {
        QMouseEvent event(QEvent::MouseMove, to, viewport.mapToGlobal(to), Qt::NoButton, button, modifiers);
        QApplication::sendEvent(&viewport, &event);
    }

    /// Over the window, and in it.
    static void drop(QWidget &window, const QStringList &paths, QPoint place)
    {
        QList<QUrl> urls;
        for (const auto &path : paths)
            urls.append(QUrl::fromLocalFile(path));
        QMimeData data;
        data.setUrls(urls);
        QDragEnterEvent enter(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        enter.ignore();
        QApplication::sendEvent(&window, &enter);
        QVERIFY(enter.isAccepted());
        QDropEvent dropped(place, Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(&window, &dropped);
    }

    static QString selectionOf(const Document &document)
    {
        QStringList ids;
        const auto selected = document.selection();
        for (const auto &one : selected)
            ids.append(one->id());
        return ids.join(u' ');
    }

    /// The action of that title in a menu of the menu bar, or in a submenu; null when there is none.
    static QAction *menuAction(DocumentWindow &window, const QString &title)
    {
        return actionBelow(*window.menuBar(), title);
    }

    static QAction *actionBelow(const QWidget &menu, const QString &title)
    {
        const auto actions = menu.actions();
        for (auto *const action : actions) {
            if (action->text().remove(u'&') == title)
                return action;
            if (!action->menu())
                continue;
            if (action->menu()->isEmpty())
                emit action->menu()->aboutToShow(); // as the user opens it
            if (auto *const found = actionBelow(*action->menu(), title))
                return found;
        }
        return nullptr;
    }

    HostOptions m_options;
    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<HostApplication> m_host;
    QStringList m_log;
};
