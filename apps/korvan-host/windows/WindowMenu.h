#pragma once

#include <QList>
#include <QMenu>

class DocumentWindow;

/// The program's windows, to bring one of them to the front. The documents come behind whatever is in the menu already.
class WindowMenu final : public QMenu
{
    Q_OBJECT

public:
    /// The list outlives the menu.
    WindowMenu(DocumentWindow &window, const QList<DocumentWindow *> &documents);

    /// Call it when the other items are there.
    void addDocuments();

private:
    void fill();

    DocumentWindow &m_window;
    const QList<DocumentWindow *> &m_documents;
    QList<QAction *> m_shown;
};
