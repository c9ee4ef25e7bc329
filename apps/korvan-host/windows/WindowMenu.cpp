#include "windows/WindowMenu.h"

#include "widgets/PluginText.h"
#include "windows/DocumentWindow.h"

#include <QMenuBar>

WindowMenu::WindowMenu(DocumentWindow &window, const QList<DocumentWindow *> &documents)
    : QMenu(tr("&Window"), window.menuBar())
    , m_window(window)
    , m_documents(documents)
{ }

void WindowMenu::addDocuments()
{
    addSeparator();
    connect(this, &QMenu::aboutToShow, this, &WindowMenu::fill);
}

void WindowMenu::fill()
{
    qDeleteAll(std::exchange(m_shown, {}));
    for (auto *const document : m_documents) {
        auto *const action =
            addAction(withoutMnemonics(document->session().title()), document, &DocumentWindow::bringToFront);
        action->setCheckable(true);
        action->setChecked(document == &m_window);
        action->setMenuRole(QAction::NoRole);
        m_shown.append(action);
    }
}
