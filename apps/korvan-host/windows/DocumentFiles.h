#pragma once

#include "editing/DocumentSession.h"
#include "plugins/HostActions.h"

#include <QObject>

#include <memory>

class DocumentWindow;
class QWidget;

/// Saves the document of a window, and asks the user where that is needed.
class DocumentFiles final : public QObject
{
    Q_OBJECT

public:
    DocumentFiles(DocumentWindow &window, std::shared_ptr<DocumentSession> session, HostActions &actions);
    ~DocumentFiles() override;

    /// All answer whether the document is saved now. What went wrong was said to the user. The file of a document that
    /// is open in another window is not written.
    bool save();
    bool saveAs();
    bool saveTo(const QString &path);
    /// Whether the window may be closed: asks what becomes of changes that are not saved.
    bool mayClose();

signals:
    void saved(const QString &path);

private:
    bool isOpenElsewhere(const QString &path) const;

    DocumentWindow &m_window;
    std::shared_ptr<DocumentSession> m_session;
    HostActions &m_actions;
};

/// Says an error to the user and waits until it was read.
void showError(QWidget *window, const QString &title, const KRError &error);
